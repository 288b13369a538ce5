import QtQuick
import QtQuick.Templates as T
import Corvane

// A slider. `moved` is each step of the user's, with the new `value`; `released` comes when mouse or key let go.
T.Slider {
    id: control

    required property string accessibleName

    // Under the names that assistive technologies ask for.
    readonly property real minimumValue: from
    readonly property real maximumValue: to

    signal released

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    padding: 0
    snapMode: T.Slider.SnapAlways

    Accessible.name: accessibleName

    onPressedChanged: {
        if (!pressed)
            released();
    }

    background: Rectangle {
        color: Theme.track
        height: 4
        radius: 2
        width: control.availableWidth
        y: Math.round((control.height - height) / 2)

        Rectangle {
            color: Theme.accent
            height: parent.height
            radius: 2
            width: control.handle.x + control.handle.width / 2
        }
    }

    handle: Rectangle {
        border.color: Theme.isDark ? "#00000000" : "#aab4be"
        border.width: 1
        color: control.pressed ? Qt.darker(Theme.knob, 1.06) : Theme.knob
        height: 18
        radius: 9
        width: 18
        x: control.visualPosition * (control.availableWidth - width)
        y: Math.round((control.height - height) / 2)

        FocusRing {
            control: control
            radius: height / 2
            shown: control.visualFocus
        }
    }
}
