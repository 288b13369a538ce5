import QtQuick
import QtQuick.Templates as T
import Corvane

// Hours or minutes: two digits that can be typed, or stepped with the arrow keys and the wheel. It shows `shown`; what
// the user makes of it is asked for with `chosen`.
T.SpinBox {
    id: control

    required property string accessibleName
    required property int shown

    // Under the names that assistive technologies ask for.
    readonly property int maximumValue: to
    readonly property int minimumValue: from

    signal chosen(int value)

    implicitWidth: 44
    implicitHeight: Theme.controlHeight
    editable: true
    hoverEnabled: true
    value: shown
    wrap: true

    textFromValue: (value, locale) => String(value).padStart(2, "0")
    valueFromText: (text, locale) => Number(text)
    validator: IntValidator {
        bottom: control.from
        top: control.to
    }

    Accessible.name: accessibleName

    // Assistive technologies set it, and nothing else tells.
    onValueChanged: {
        if (value !== shown) {
            chosen(value);
            value = Qt.binding(() => shown);
        }
    }

    // What is not there cannot be stepped.
    down.indicator: Item {}
    up.indicator: Item {}

    background: Rectangle {
        color: control.hovered ? Theme.pressTint : Theme.wellTint
        radius: Theme.radiusSmall

        FocusRing {
            control: control
            radius: Theme.radius
        }
    }

    contentItem: TextInput {
        color: Theme.text
        font.pixelSize: Theme.bodySize
        horizontalAlignment: TextInput.AlignHCenter
        inputMethodHints: Qt.ImhDigitsOnly
        selectByMouse: true
        selectedTextColor: Theme.accentInk
        selectionColor: Theme.accent
        text: control.displayText
        validator: control.validator
        verticalAlignment: TextInput.AlignVCenter

        onActiveFocusChanged: {
            if (activeFocus)
                selectAll();
        }
    }
}
