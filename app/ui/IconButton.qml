import QtQuick
import QtQuick.Templates as T
import Corvane

// A symbol that can be clicked. `text` says what it does: to a screen reader, and in a tip to whoever waits over it.
T.AbstractButton {
    id: control

    required property string symbol
    // A colour role; "" is the colour of explanations.
    property string role

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.name: text
    Accessible.onPressAction: clicked()

    background: Rectangle {
        color: control.down ? Theme.pressTint : control.hovered ? Theme.hoverTint : "transparent"
        radius: Theme.radius

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        FocusRing {
            control: control
            shown: control.visualFocus
        }
    }

    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            color: control.role === "" ? Theme.secondaryText : Theme.roleTextColor(control.role)
            height: 18
            name: control.symbol
            width: 18
        }
    }

    Tip {
        control: control
    }
}
