pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The drives that are kept from spinning down.
FeatureSection {
    id: section

    required property DriveManager drives
    required property MenuState menu

    emoji: "💾"
    expanded: menu.expandDrives
    isOn: drives.enabled
    title: Lang.isGerman ? "Laufwerke wach" : "Keep drives awake"

    onSetExpanded: expanded => menu.expandDrives = expanded
    onSetOn: on => drives.enabled = on

    content: ColumnLayout {
        id: body

        // What a row shows while it goes.
        property driveRow nothing

        // The keyboard goes on to the next drive.
        function remove(index: int, reason: int) {
            section.drives.remove(section.menu.driveRows[index].drive);
            const next = rows.itemAt(index) as DriveRowView;
            if (next)
                next.removeButton.forceActiveFocus(reason);
            else
                leave(addDrive, reason);
        }

        // From a control that may have nothing left to do.
        function leave(control: Item, reason: int) {
            (control.enabled ? control : control.nextItemInFocusChain()).forceActiveFocus(reason);
        }

        spacing: Theme.spaceSmall

        CaptionText {
            text: Lang.isGerman ? "Hält externe Laufwerke wach, solange der Schalter an ist — per kurzem Lesezugriff im gewählten Takt. Nur lesend, pairt mit Zugeklappt-wach." : "Keeps external drives awake while the switch is on — a short read at the chosen interval. Read-only, pairs with closed-lid."
        }

        // By their number: a change of one makes none of them anew, which would take the keyboard from it.
        Repeater {
            id: rows

            model: section.menu.driveRows.length

            DriveRowView {
                required property int index

                row: section.menu.driveRows[index] ?? body.nothing

                onRemoved: body.remove(index, removeButton.focusReason)
            }
        }

        CaptionText {
            objectName: "noDrives"
            text: Lang.isGerman ? "Keine externen Laufwerke" : "No external drives"
            visible: section.menu.availableDrives.length === 0
        }

        ChoiceMenu {
            id: addDrive

            // Its symbol stands under those above.
            Layout.leftMargin: -leftPadding
            items: Array.from(section.menu.addableDrives, drive => ({
                        label: drive.name,
                        value: drive
                    }))
            objectName: "addDrive"
            symbol: "plus.circle"
            text: Lang.isGerman ? "Laufwerk hinzufügen…" : "Add drive…"

            onChosen: drive => {
                section.drives.add(drive);
                if (!enabled)
                    body.leave(addDrive, keyboard.reason);
            }
            onOpening: section.menu.refreshDrives()
        }

        LabelledChoice {
            model: [
                {
                    label: Lang.isGerman ? "30 Sek." : "30s",
                    value: 30
                },
                {
                    label: Lang.isGerman ? "1 Min." : "1 min",
                    value: 60
                },
                {
                    label: Lang.isGerman ? "5 Min." : "5 min",
                    value: 300
                }
            ]
            objectName: "refreshEvery"
            text: Lang.isGerman ? "Auffrischen alle" : "Refresh every"
            value: section.drives.intervalSeconds

            onChosen: value => section.drives.intervalSeconds = value
        }
    }
}
