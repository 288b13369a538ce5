import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// A row that shows and hides what is below it.
T.AbstractButton {
    id: control

    required property string symbol
    required property bool isOpen

    Layout.fillWidth: true
    hoverEnabled: true
    implicitHeight: 34
    implicitWidth: 300

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: isOpen ? (Lang.isGerman ? "Aufgeklappt" : "Expanded") : (Lang.isGerman ? "Zugeklappt" : "Collapsed")

    background: Rectangle {
        color: control.down ? Theme.pressTint : control.hovered ? Theme.hoverTint : "transparent"
        radius: Theme.radius

        FocusRing {
            anchors.margins: 0
            control: control
            shown: control.visualFocus
        }
    }

    contentItem: Item {
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondaryText
            name: control.symbol
            x: Theme.spaceSmall
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.text
            font.pixelSize: Theme.bodySize
            text: control.text
            textFormat: Text.PlainText
            width: chevron.x - x - Theme.spaceSmall
            wrapMode: Text.Wrap
            x: 34
        }

        Symbol {
            id: chevron

            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondaryText
            height: 14
            name: control.isOpen ? "chevron.up" : "chevron.down"
            objectName: "chevron"
            width: 14
            x: parent.width - width - Theme.spaceSmall - 2
        }
    }
}
