import QtQuick
import QtQuick.Layouts
import Corvane

// One thing that can be on or off, as a row of the full width. It shows `isOn`; a click asks for the other.
ToggleButton {
    id: control

    required property string symbol
    required property string title
    property string subtitle

    Layout.fillWidth: true
    implicitHeight: Math.max(34, texts.implicitHeight + 2 * Theme.spaceSmall)
    implicitWidth: 300
    text: title

    Accessible.name: title
    Accessible.description: subtitle

    background: Rectangle {
        color: control.down ? Theme.pressTint : control.hovered ? Theme.hoverTint : "transparent"
        radius: Theme.radius

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            anchors.margins: 0
            control: control
            shown: control.visualFocus
        }
    }

    contentItem: Item {
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: control.isOn ? Theme.accent : Theme.secondaryText
            name: control.symbol
            x: Theme.spaceSmall
        }

        Column {
            id: texts

            anchors.verticalCenter: parent.verticalCenter
            width: check.x - x - Theme.spaceSmall
            x: 34

            Text {
                color: Theme.text
                font.pixelSize: Theme.bodySize
                text: control.title
                textFormat: Text.PlainText
                width: parent.width
                wrapMode: Text.Wrap
            }

            Text {
                color: Theme.secondaryText
                font.pixelSize: Theme.captionSize
                text: control.subtitle
                textFormat: Text.PlainText
                visible: text !== ""
                width: parent.width
                wrapMode: Text.Wrap
            }
        }

        Symbol {
            id: check

            anchors.verticalCenter: parent.verticalCenter
            color: control.isOn ? Theme.accent : Theme.track
            name: control.isOn ? "checkmark.circle.fill" : "circle"
            x: parent.width - width - Theme.spaceSmall
        }
    }
}
