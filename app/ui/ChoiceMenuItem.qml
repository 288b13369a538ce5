import QtQuick
import QtQuick.Templates as T
import Corvane

// One line of a drop-down menu.
T.MenuItem {
    id: control

    required property bool isChosen

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    leftPadding: 28
    rightPadding: Theme.space

    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.checkable: isChosen
    Accessible.checked: isChosen

    background: Rectangle {
        color: control.highlighted ? Theme.accent : "transparent"
        radius: Theme.radiusSmall

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: control.highlighted ? Theme.onAccent : Theme.text
            height: 14
            name: "checkmark"
            visible: control.isChosen
            width: 14
            x: 8
        }
    }

    contentItem: Text {
        color: control.highlighted ? Theme.onAccent : Theme.text
        elide: Text.ElideRight
        font.pixelSize: Theme.bodySize
        text: control.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
    }
}
