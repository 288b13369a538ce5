import QtQuick
import QtQuick.Templates as T
import Corvane

// A duration to choose from several.
T.AbstractButton {
    id: control

    required property string label
    required property bool isSelected

    hoverEnabled: true
    horizontalPadding: 10
    implicitHeight: 26
    implicitWidth: Math.max(48, implicitContentWidth + leftPadding + rightPadding)
    text: label

    Accessible.role: Accessible.RadioButton
    Accessible.name: label
    Accessible.checkable: true
    Accessible.checked: isSelected

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
        color: control.isSelected ? Theme.onAccent : Theme.text
        font.pixelSize: Theme.bodySize - 1
        font.weight: control.isSelected ? Font.DemiBold : Font.Medium
        horizontalAlignment: Text.AlignHCenter
        text: control.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
