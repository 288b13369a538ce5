import QtQuick
import QtQuick.Templates as T
import Corvane

// One of several choices. It shows `isChosen`; a click only asks.
T.RadioButton {
    id: control

    required property bool isChosen

    autoExclusive: false
    checked: isChosen
    hoverEnabled: true

    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    onToggled: checked = Qt.binding(() => isChosen)
}
