pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// Lets the session end at any time of the calendar.
ColumnLayout {
    id: custom

    required property MenuState menu

    Layout.fillWidth: true
    spacing: Theme.spaceSmall

    DisclosureRow {
        isOpen: custom.menu.showingCustomPicker
        objectName: "customEndTime"
        symbol: "calendar.badge.clock"
        text: Lang.isGerman ? "Eigene Endzeit…" : "Custom end time…"

        onClicked: custom.menu.showingCustomPicker = !custom.menu.showingCustomPicker
    }

    LazyBody {
        shown: custom.menu.showingCustomPicker

        content: ColumnLayout {
            spacing: Theme.spaceSmall

            DateTimePicker {
                Layout.fillWidth: true
                objectName: "customDate"
                value: custom.menu.customDate

                onChosen: value => custom.menu.customDate = value
            }

            PanelButton {
                Layout.alignment: Qt.AlignRight
                kind: "filled"
                objectName: "applyCustomDate"
                text: Lang.isGerman ? "Übernehmen" : "Apply"

                onClicked: custom.menu.applyCustomDate()
            }
        }
    }
}
