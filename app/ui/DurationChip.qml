import QtQuick
import Corvane

// A duration to choose from several.
ChoiceButton {
    id: control

    required property string label
    required property bool isSelected

    horizontalPadding: 10
    implicitHeight: 26
    isChosen: isSelected
    implicitWidth: Math.max(48, implicitContentWidth + leftPadding + rightPadding)
    text: label

    background: Rectangle {
        color: control.isSelected ? Theme.accent : control.down ? Theme.tint(Theme.accent, 0.28) : control.hovered ? Theme.tint(Theme.accent, 0.16) : Theme.wellTint
        radius: height / 2

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            control: control
            radius: height / 2
            shown: control.visualFocus
        }
    }

    contentItem: Text {
        color: control.isSelected ? Theme.accentInk : Theme.text
        font.pixelSize: Theme.bodySize - 1
        font.weight: control.isSelected ? Font.DemiBold : Font.Medium
        horizontalAlignment: Text.AlignHCenter
        text: control.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
