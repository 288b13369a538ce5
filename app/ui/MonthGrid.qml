pragma ComponentBehavior: Bound
import QtQuick
import Corvane

// The days of `month` in rows of seven. One stop for the keyboard: the arrow keys move by days and weeks, the page keys
// by months.
Item {
    id: grid

    required property CalendarMonth month

    readonly property int cellHeight: 28
    readonly property real cellWidth: width / 7

    signal chosen(date value)

    function move(days: int, months: int) {
        chosen(month.later(days, months));
    }

    activeFocusOnTab: true
    implicitHeight: 20 + 6 * cellHeight
    implicitWidth: 7 * 32

    Accessible.role: Accessible.Table
    // The keyboard stays on the grid while the choice moves: the choice is what there is to hear.
    Accessible.name: month.selectedDay > 0 ? month.days[month.selectedDay - 1] : month.title
    Accessible.focusable: true

    Keys.onDownPressed: move(7, 0)
    Keys.onLeftPressed: move(-1, 0)
    Keys.onRightPressed: move(1, 0)
    Keys.onUpPressed: move(-7, 0)
    Keys.onPressed: event => {
        event.accepted = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown;
        if (event.accepted)
            move(0, event.key === Qt.Key_PageUp ? -1 : 1);
    }

    Row {
        Repeater {
            model: grid.month.weekdays

            CaptionText {
                required property string modelData

                horizontalAlignment: Text.AlignHCenter
                text: modelData
                width: grid.cellWidth
            }
        }
    }

    Repeater {
        model: grid.month.days

        ChoiceButton {
            id: cell

            required property int index
            required property string modelData
            readonly property int day: index + 1
            readonly property int place: index + grid.month.leadingDays

            focusPolicy: Qt.NoFocus
            height: grid.cellHeight
            isChosen: day === grid.month.selectedDay
            objectName: "day" + day
            text: day
            width: grid.cellWidth
            x: (place % 7) * grid.cellWidth
            y: 20 + Math.floor(place / 7) * grid.cellHeight

            Accessible.name: modelData

            onClicked: grid.chosen(grid.month.onDay(day))

            background: Rectangle {
                anchors.centerIn: parent
                color: cell.isChosen ? Theme.accent : cell.hovered ? Theme.tint(Theme.accent, 0.16) : "transparent"
                height: 26
                radius: 13
                width: 26

                FocusRing {
                    control: grid
                    radius: height / 2
                    shown: cell.isChosen && grid.activeFocus
                }
            }

            contentItem: Text {
                color: cell.isChosen ? Theme.accentInk : Theme.text
                font.pixelSize: Theme.bodySize - 1
                font.weight: cell.isChosen ? Font.DemiBold : Font.Normal
                horizontalAlignment: Text.AlignHCenter
                text: cell.text
                textFormat: Text.PlainText
                verticalAlignment: Text.AlignVCenter
            }
        }
    }
}
