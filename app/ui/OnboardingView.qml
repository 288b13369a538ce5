pragma ComponentBehavior: Bound
import QtQuick
import Corvane

// The introduction, in a window without a frame: it is moved by its background and has a button that closes it.
FocusScope {
    id: view

    required property OnboardingState onboarding

    // It has appeared.
    readonly property bool ready: Window.visibility !== Window.Hidden
    readonly property string role: onboarding.pages[onboarding.page].accent
    readonly property color accent: Theme.roleTextColor(role)

    // The user is done with the introduction, before its end.
    signal closeRequested

    function goOn() {
        if (onboarding.isLast) {
            onboarding.finish();
        } else {
            onboarding.advance(1);
        }
    }

    focus: true
    implicitHeight: 640
    implicitWidth: 560

    Keys.onEscapePressed: closeRequested()
    Keys.onLeftPressed: onboarding.advance(-1)
    Keys.onRightPressed: onboarding.advance(1)

    OnboardingBackground {
        anchors.fill: parent
        objectName: "background"
        role: view.role

        // With the press itself: a window manager that hears of the move later can miss that the button is let go.
        MouseArea {
            anchors.fill: parent

            onPressed: view.Window.window.startSystemMove()
        }
    }

    Item {
        anchors.bottom: bar.top
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: 24
        opacity: view.ready ? 1 : 0
        objectName: "pages"

        Behavior on opacity {
            NumberAnimation {
                duration: 480
                easing.type: Easing.OutQuad
            }
        }

        Repeater {
            model: view.onboarding.pages.length

            OnboardingPageView {
                required property int index

                goingForward: view.onboarding.goingForward
                height: parent.height
                isCurrent: view.onboarding.page === index
                isMoving: view.ready
                objectName: "page" + (index + 1)
                page: view.onboarding.pages[index]
                width: parent.width
            }
        }
    }

    Item {
        id: bar

        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: 32
        anchors.right: parent.right
        height: next.height

        CapsuleButton {
            id: back

            fill: Theme.tint(Theme.text, 0.08)
            ink: Theme.text
            objectName: "back"
            text: Lang.isGerman ? "Zurück" : "Back"
            visible: !view.onboarding.isFirst

            onClicked: view.onboarding.advance(-1)
            onVisibleChanged: {
                if (!visible && focus) {
                    next.forceActiveFocus(focusReason);
                }
            }
        }

        PageDots {
            accent: view.accent
            anchors.centerIn: parent
            count: view.onboarding.pages.length
            current: view.onboarding.page
            objectName: "dots"
        }

        CapsuleButton {
            id: next

            anchors.right: parent.right
            fill: view.accent
            focus: true
            ink: Theme.accentInk
            objectName: "next"
            width: 136
            text: view.onboarding.isLast ? (Lang.isGerman ? "Los geht's!" : "Let's go!") : (Lang.isGerman ? "Weiter" : "Next")

            onClicked: view.goOn()
        }
    }

    IconButton {
        anchors.margins: Theme.space
        anchors.right: parent.right
        anchors.top: parent.top
        objectName: "close"
        symbol: "xmark"
        text: Lang.isGerman ? "Schließen" : "Close"

        Keys.onEnterPressed: clicked()
        Keys.onReturnPressed: clicked()
        onClicked: view.closeRequested()
    }
}
