pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The user's rules: what the computer stays awake for by itself.
FeatureSection {
    id: section

    required property TriggerManager triggers
    required property MenuState menu

    // The user wants to choose an application.
    signal pickApp

    emoji: "🤖"
    expanded: menu.expandAuto
    isOn: triggers.automationEnabled
    title: Lang.isGerman ? "Automatik" : "Automation"

    onSetExpanded: expanded => menu.expandAuto = expanded
    onSetOn: on => triggers.automationEnabled = on

    content: ColumnLayout {
        spacing: Theme.spaceSmall

        SwitchRow {
            isOn: section.triggers.keepAwakeOnAC
            objectName: "awakeOnAC"
            text: Lang.isGerman ? "Wach am Netzteil" : "Awake on AC power"

            onSetOn: on => section.triggers.keepAwakeOnAC = on
        }

        SwitchRow {
            isOn: section.triggers.keepAwakeOnExternalDisplay
            objectName: "awakeWithDisplay"
            text: Lang.isGerman ? "Wach bei externem Bildschirm" : "Awake with external display"

            onSetOn: on => section.triggers.keepAwakeOnExternalDisplay = on
        }

        Repeater {
            model: section.triggers.apps

            RuleRow {
                required property triggerApp modelData

                app: modelData
                menu: section.menu

                onCooled: cooling => section.triggers.setCooling(modelData, cooling)
                onRemoved: section.triggers.removeApp(modelData)
            }
        }

        CaptionText {
            color: Theme.accent
            objectName: "activeReason"
            text: (Lang.isGerman ? "aktiv: %1" : "active: %1").arg(section.triggers.activeReason)
            visible: section.triggers.active
        }

        PanelButton {
            // Its symbol stands under those above.
            Layout.leftMargin: -leftPadding
            objectName: "chooseApp"
            symbol: "plus.circle"
            text: Lang.isGerman ? "App auswählen…" : "Choose app…"

            onClicked: section.pickApp()
        }
    }
}
