import QtQuick
import QtQuick.Layouts
import Corvane

// A day in a month's grid, and a time of that day. It shows `value`; every choice is told with `chosen`.
ColumnLayout {
    id: picker

    required property date value

    signal chosen(date value)

    spacing: Theme.spaceSmall

    CalendarMonth {
        id: month

        isGerman: Lang.isGerman
        selected: picker.value
    }

    RowLayout {
        IconButton {
            objectName: "previousMonth"
            symbol: "chevron.left"
            text: Lang.isGerman ? "Voriger Monat" : "Previous month"

            onClicked: month.showLater(-1)
        }

        BodyText {
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            objectName: "monthTitle"
            text: month.title
        }

        IconButton {
            objectName: "nextMonth"
            symbol: "chevron.right"
            text: Lang.isGerman ? "Nächster Monat" : "Next month"

            onClicked: month.showLater(1)
        }
    }

    MonthGrid {
        Layout.fillWidth: true
        month: month
        objectName: "monthGrid"

        onChosen: value => picker.chosen(value)
    }

    RowLayout {
        spacing: Theme.spaceTiny

        BodyText {
            color: Theme.secondaryText
            text: Lang.isGerman ? "Uhrzeit" : "Time"
        }

        TimeField {
            accessibleName: Lang.isGerman ? "Stunde" : "Hour"
            objectName: "hour"
            shown: picker.value.getHours()
            to: 23

            onChosen: value => picker.chosen(month.atTime(value, picker.value.getMinutes()))
        }

        BodyText {
            Layout.fillWidth: false
            text: ":"
        }

        TimeField {
            accessibleName: "Minute"
            objectName: "minute"
            shown: picker.value.getMinutes()
            to: 59

            onChosen: value => picker.chosen(month.atTime(picker.value.getHours(), value))
        }
    }
}
