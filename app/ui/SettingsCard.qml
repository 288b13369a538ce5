import QtQuick
import QtQuick.Layouts
import Corvane

// Settings that belong together, under the name they have together; "" for none.
ColumnLayout {
    id: card

    property string title
    default property alias content: column.data

    Layout.fillWidth: true
    spacing: Theme.spaceTiny

    HeadingText {
        Layout.leftMargin: Theme.spaceTiny
        text: card.title
        visible: text !== ""
    }

    Rectangle {
        Layout.fillWidth: true
        border.color: Theme.outline
        border.width: 1
        color: Theme.card
        implicitHeight: column.implicitHeight + 2 * Theme.spaceSmall
        radius: Theme.radiusLarge

        ColumnLayout {
            id: column

            anchors.fill: parent
            anchors.leftMargin: Theme.space
            anchors.rightMargin: Theme.space
            anchors.topMargin: Theme.spaceSmall
            anchors.bottomMargin: Theme.spaceSmall
            spacing: Theme.spaceSmall
        }
    }
}
