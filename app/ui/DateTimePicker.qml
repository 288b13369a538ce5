import QtQuick
import QtQuick.Layouts
import Corvane

// A day in a month's grid, and a time of that day. It shows `value`; every choice is told with `chosen`. Days before
// that of `minimum`, if there is one, cannot be chosen.
ColumnLayout {
    id: picker

    required property date value
    property date minimum

    signal chosen(date value)

    spacing: Theme.spaceSmall

    CalendarMonth {
        id: month

        isGerman: Lang.isGerman
        minimum: picker.minimum
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
            to: 23
            value: picker.value.getHours()

            onValueModified: picker.chosen(month.atTime(value, picker.value.getMinutes()))
        }

        BodyText {
            Layout.fillWidth: false
            text: ":"
        }

        TimeField {
            accessibleName: "Minute"
            objectName: "minute"
            to: 59
            value: picker.value.getMinutes()

            onValueModified: picker.chosen(month.atTime(picker.value.getHours(), value))
        }
    }
}
