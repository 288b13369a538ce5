import QtQuick
import QtQuick.Templates as T
import Corvane

// A slider. It shows `shown`; each step of the user's, whichever way it was made, asks with `chosen`. `released` comes
// when mouse or key let go.
T.Slider {
    id: control

    required property string accessibleName
    required property real shown

    // Under the names that assistive technologies ask for.
    readonly property real minimumValue: from
    readonly property real maximumValue: to

    signal chosen(real value)
    signal released

    function nearestStep(value: real): real {
        return from + Math.round((value - from) / stepSize) * stepSize;
    }

    implicitWidth: 200
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity
    padding: 0
    snapMode: T.Slider.SnapAlways
    value: shown

    Accessible.name: accessibleName

    onPressedChanged: {
        if (!pressed)
            released();
    }
    // Assistive technologies set it, and nothing else tells.
    onValueChanged: {
        if (value !== shown) {
            chosen(nearestStep(value));
            value = Qt.binding(() => shown);
        }
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
