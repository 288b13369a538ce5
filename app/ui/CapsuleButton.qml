import QtQuick
import QtQuick.Templates as T
import Corvane

// A large button with round ends. Enter does what Space does. `fill` is its surface, `ink` what is written on it.
T.AbstractButton {
    id: control

    required property color fill
    required property color ink

    hoverEnabled: true
    horizontalPadding: 24
    implicitHeight: 44
    implicitWidth: implicitContentWidth + leftPadding + rightPadding

    Accessible.name: text
    Accessible.onPressAction: clicked()

    Keys.onEnterPressed: event => confirm(event)
    Keys.onReturnPressed: event => confirm(event)

    // A key that is held down is pressed once.
    function confirm(event: KeyEvent) {
        if (!event.isAutoRepeat) {
            clicked();
        }
    }

    background: Rectangle {
        color: control.fill
        radius: height / 2

        Behavior on color {
            ColorAnimation {
                duration: 240
            }
        }

        Rectangle {
            anchors.fill: parent
            color: control.down ? Theme.pressTint : control.hovered ? Theme.hoverTint : "transparent"
            radius: parent.radius

            Behavior on color {
                ColorAnimation {
                    duration: Theme.quick
                }
            }
        }

        FocusRing {
            anchors.margins: -4
            border.color: Theme.text
            control: control
            radius: height / 2
            shown: control.visualFocus
        }
    }

    contentItem: Text {
        color: control.ink
        font.pixelSize: Theme.titleSize
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        text: control.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter

        Accessible.ignored: true
    }
}
