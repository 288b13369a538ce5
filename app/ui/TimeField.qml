import QtQuick
import QtQuick.Templates as T
import Corvane

// Hours or minutes: two digits that can be typed, or stepped with the arrow keys and the wheel.
T.SpinBox {
    id: control

    required property string accessibleName

    implicitWidth: 44
    implicitHeight: Theme.controlHeight
    editable: true
    hoverEnabled: true
    wrap: true

    textFromValue: (value, locale) => String(value).padStart(2, "0")
    valueFromText: (text, locale) => Number(text)
    validator: IntValidator {
        bottom: control.from
        top: control.to
    }

    Accessible.name: accessibleName

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
