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
        id: body

        // What a row shows while it goes.
        property triggerApp nothing

        // The keyboard goes on to the next rule.
        function remove(index: int, reason: int) {
            section.triggers.removeApp(section.triggers.apps[index]);
            const next = rules.itemAt(index) as RuleRow;
            (next ? next.removeButton : chooseApp).forceActiveFocus(reason);
        }

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

        // By their number: a change of one makes none of them anew, which would take the keyboard from it.
        Repeater {
            id: rules

            model: section.triggers.apps.length

            RuleRow {
                required property int index

                app: section.triggers.apps[index] ?? body.nothing

                onCooled: cooling => section.triggers.setCooling(app, cooling)
                onRemoved: body.remove(index, removeButton.focusReason)
            }
        }

        CaptionText {
            color: Theme.accent
            objectName: "activeReason"
            text: (Lang.isGerman ? "aktiv: %1" : "active: %1").arg(section.triggers.activeReason)
            visible: section.triggers.active
        }

        PanelButton {
            id: chooseApp

            // Its symbol stands under those above.
            Layout.leftMargin: -leftPadding
            objectName: "chooseApp"
            symbol: "plus.circle"
            text: Lang.isGerman ? "App auswählen…" : "Choose app…"

            onClicked: section.pickApp()
        }
    }
}
