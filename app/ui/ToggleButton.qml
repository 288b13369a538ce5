import QtQuick
import QtQuick.Templates as T
import Corvane

// Something that is on or off. It shows `isOn`; a click only asks for the other.
T.CheckBox {
    id: control

    required property bool isOn

    signal setOn(bool on)

    checked: isOn
    hoverEnabled: true
    nextCheckState: () => isOn ? Qt.Checked : Qt.Unchecked

    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    onClicked: setOn(!isOn)
}
