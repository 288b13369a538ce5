import QtQuick
import Corvane

// A switch that always shows what is so: a click asks for the other state, and the knob moves once `isOn` does.
ToggleButton {
    id: control

    // What it switches, for those who cannot see it.
    required property string accessibleName

    implicitWidth: 38
    implicitHeight: 22
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.name: accessibleName

    background: Rectangle {
        border.color: Theme.isDark ? Qt.lighter(color, 1.15) : Qt.darker(color, 1.08)
        border.width: control.hovered ? 1 : 0
        color: control.isOn && control.enabled ? Theme.accent : Theme.track
        radius: height / 2

        Behavior on color {
            ColorAnimation {
                duration: Theme.calm
            }
        }

        FocusRing {
            control: control
            radius: height / 2
            shown: control.visualFocus
        }
    }

    contentItem: Item {
        Rectangle {
            // From off to on. It is this that moves: a knob that is laid out is where it belongs at once.
            property real position: control.isOn ? 1 : 0

            anchors.verticalCenter: parent.verticalCenter
            color: Theme.knob
            height: 18
            radius: 9
            width: control.down ? 21 : 18
            x: 2 + position * (parent.width - width - 4)

            Behavior on position {
                NumberAnimation {
                    duration: Theme.calm
                    easing.type: Easing.OutCubic
                }
            }
            Behavior on width {
                NumberAnimation {
                    duration: Theme.quick
                }
            }
        }
    }
}
