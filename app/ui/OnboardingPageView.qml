import QtQuick
import Corvane

// A page of the introduction. When it becomes the current one it comes in from the side that the user goes to, and the
// page before it leaves to the other, both of them as soon as `isMoving` allows.
Item {
    id: view

    required property onboardingPage page
    required property bool isCurrent
    required property bool goingForward
    required property bool isMoving

    readonly property real travel: goingForward ? 56 : -56

    function spoken(lines: string): string {
        return lines.replace(/\n+/g, " ");
    }

    opacity: 0
    visible: opacity > 0

    Accessible.name: spoken(page.title) + ". " + spoken(page.body)
    Accessible.role: Accessible.StaticText

    states: State {
        name: "current"
        when: view.isCurrent

        PropertyChanges {
            opacity: 1
            target: view
        }
    }

    transitions: [
        Transition {
            enabled: view.isMoving
            to: "current"

            NumberAnimation {
                duration: 360
                easing.type: Easing.OutCubic
                from: view.visible ? view.x : view.travel
                property: "x"
                target: view
                to: 0
            }
            NumberAnimation {
                duration: 280
                easing.type: Easing.OutQuad
                property: "opacity"
            }
        },
        Transition {
            enabled: view.isMoving
            from: "current"

            NumberAnimation {
                duration: 240
                easing.type: Easing.OutCubic
                property: "x"
                target: view
                to: -view.travel
            }
            NumberAnimation {
                duration: 160
                easing.type: Easing.OutQuad
                property: "opacity"
            }
        }
    ]

    Column {
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width

        Emoji {
            anchors.horizontalCenter: parent.horizontalCenter
            bottomPadding: 24
            font.pixelSize: 80
            objectName: "emoji"
            text: view.page.emoji
        }

        Text {
            bottomPadding: 20
            color: Theme.text
            font.letterSpacing: -0.4
            font.pixelSize: Theme.displaySize
            font.weight: Font.Bold
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 1.12
            objectName: "title"
            text: view.page.title
            textFormat: Text.PlainText
            width: parent.width
            wrapMode: Text.Wrap

            Accessible.ignored: true
        }

        // Lines of one height, pictures among the letters or not.
        Text {
            color: Theme.tint(Theme.text, 0.84)
            font.pixelSize: Theme.titleSize
            horizontalAlignment: Text.AlignHCenter
            lineHeight: 24
            lineHeightMode: Text.FixedHeight
            objectName: "body"
            text: view.page.body
            textFormat: Text.PlainText
            width: parent.width
            wrapMode: Text.Wrap

            Accessible.ignored: true
        }
    }
}
