import QtQuick
import Corvane

// Settings that belong together, under the name they have together; "" for none. All of it is as wide as the parent:
// texts that wrap in layouts within layouts would be laid out for widths that they never get.
Column {
    id: card

    property string title
    default property alias content: column.data

    spacing: Theme.spaceTiny
    width: parent.width

    HeadingText {
        leftPadding: Theme.spaceTiny
        text: card.title
        visible: text !== ""
        width: parent.width
    }

    Rectangle {
        border.color: Theme.outline
        border.width: 1
        color: Theme.card
        height: column.height + 2 * column.y
        radius: Theme.radiusLarge
        width: parent.width

        Column {
            id: column

            spacing: 6
            width: parent.width - 2 * x
            x: Theme.space
            y: Theme.spaceSmall
        }
    }
}
