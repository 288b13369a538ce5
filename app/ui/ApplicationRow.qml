import QtQuick
import QtQuick.Templates as T
import Corvane

// An application that can be chosen.
T.ItemDelegate {
    id: row

    required property int index
    required property string identifier
    required property string name
    required property string iconName

    highlighted: ListView.isCurrentItem
    hoverEnabled: true
    implicitHeight: 34
    text: name

    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.selectable: true
    Accessible.selected: highlighted

    background: Rectangle {
        color: row.highlighted ? Theme.tint(Theme.accent, 0.18) : row.hovered ? Theme.hoverTint : "transparent"
        radius: Theme.radiusSmall
    }

    contentItem: Item {
        Image {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            height: 22
            source: "image://applications/" + encodeURIComponent(row.iconName)
            sourceSize.height: 44
            sourceSize.width: 44
            width: 22
            x: Theme.spaceSmall
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.text
            elide: Text.ElideRight
            font.pixelSize: Theme.bodySize
            text: row.name
            textFormat: Text.PlainText
            width: parent.width - x - Theme.spaceSmall
            x: icon.x + icon.width + Theme.spaceSmall
        }
    }
}
