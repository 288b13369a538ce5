pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The closed-lid mode, which needs the fan helper.
FeatureSection {
    id: section

    required property LidManager lid
    required property FanController fan
    required property MenuState menu

    emoji: "💻"
    expanded: menu.expandLid
    isOn: lid.enabled
    switchDisabled: !fan.helperInstalled
    title: Lang.isGerman ? "Zugeklappt wach halten" : "Awake, lid closed"

    onSetExpanded: expanded => menu.expandLid = expanded
    onSetOn: on => menu.toggleClosedLid(on)

    content: ColumnLayout {
        spacing: Theme.spaceSmall

        CaptionText {
            text: Lang.isGerman ? "Uploads und Renders laufen mit geschlossenem Deckel weiter — auch ohne externen Monitor. Corvane kühlt dabei automatisch." : "Uploads and renders keep running with the lid shut — no external display needed. Corvane auto-cools while closed."
        }

        NoteRow {
            objectName: "lidNeedsHelper"
            role: "orange"
            symbol: "exclamationmark.triangle.fill"
            text: Lang.isGerman ? "Benötigt das Lüfter-Hilfswerkzeug (unten installieren)." : "Needs the fan helper (install below)."
            visible: !section.fan.helperInstalled
        }

        NoteRow {
            objectName: "lidActive"
            role: "green"
            symbol: "checkmark.shield.fill"
            text: Lang.isGerman ? "Aktiv — stoppt selbst bei Hitze oder wenig Akku." : "Active — stops itself on heat or low battery."
            visible: section.lid.enabled
        }

        NoteRow {
            objectName: "lidAutoOff"
            role: "orange"
            symbol: "exclamationmark.triangle.fill"
            text: section.lid.lastAutoOff
            visible: text !== ""
        }
    }
}
