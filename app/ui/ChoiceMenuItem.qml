import QtQuick
import QtQuick.Templates as T
import Corvane

// One line of a drop-down menu.
T.MenuItem {
    id: control

    required property bool isChosen

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    checkable: true
    checked: isChosen
    hoverEnabled: true
    leftPadding: 28
    rightPadding: Theme.space

    Accessible.name: text
    Accessible.onPressAction: clicked()

    onToggled: checked = Qt.binding(() => isChosen)

    background: Rectangle {
        color: control.highlighted ? Theme.accent : "transparent"
        radius: Theme.radiusSmall

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: control.highlighted ? Theme.accentInk : Theme.text
            height: 14
            name: "checkmark"
            visible: control.isChosen
            width: 14
            x: 8
        }
    }

    contentItem: Text {
        color: control.highlighted ? Theme.accentInk : Theme.text
        elide: Text.ElideRight
        font.pixelSize: Theme.bodySize
        text: control.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
