import QtQuick
import QtQuick.Layouts
import Corvane

// How Corvane starts, looks and speaks.
SettingsCard {
    id: card

    required property SettingsState settings

    title: Lang.isGerman ? "Allgemein" : "General"

    SettingSwitch {
        isOn: card.settings.launchAtLogin
        objectName: "launchAtLogin"
        text: Lang.isGerman ? "Beim Anmelden automatisch starten" : "Launch automatically at login"

        onSetOn: on => card.settings.launchAtLogin = on
    }

    SettingSwitch {
        isOn: card.settings.showTemp
        objectName: "showTemp"
        text: Lang.isGerman ? "Temperatur in der Menüleiste anzeigen" : "Show temperature in the menu bar"

        onSetOn: on => card.settings.showTemp = on
    }

    SettingSwitch {
        hint: "⌥⌘K · " + (Lang.isGerman ? "Wach bleiben" : "Keep awake") + "    ⌥⌘L · " + (Lang.isGerman ? "Lüfter-Boost" : "Fan boost")
        isOn: card.settings.hotkeysOn
        objectName: "hotkeysOn"
        text: Lang.isGerman ? "Globale Tastenkürzel" : "Global keyboard shortcuts"

        onSetOn: on => card.settings.hotkeysOn = on
    }

    SettingSwitch {
        isOn: card.settings.heatAlerts
        objectName: "heatAlerts"
        text: Lang.isGerman ? "Warnungen bei Hitze & Drosselung" : "Alerts on heat & throttling"

        onSetOn: on => card.settings.heatAlerts = on
    }

    SettingSwitch {
        hint: Lang.isGerman ? "Beendet Wachhalten unter 15 % ohne Netzteil." : "Ends keep-awake below 15% off charger."
        isOn: card.settings.lowBattStop
        objectName: "lowBattStop"
        text: Lang.isGerman ? "Bei niedrigem Akku automatisch stoppen" : "Auto-stop on low battery"

        onSetOn: on => card.settings.lowBattStop = on
    }

    RowLayout {
        spacing: Theme.space
        width: parent.width

        BodyText {
            objectName: "languageText"
            text: Lang.isGerman ? "Sprache" : "Language"

            Accessible.ignored: true
        }

        SegmentedControl {
            accessibleName: Lang.isGerman ? "Sprache" : "Language"
            model: [
                {
                    label: "System",
                    value: "system"
                },
                {
                    label: "Deutsch",
                    value: "de"
                },
                {
                    label: "English",
                    value: "en"
                }
            ]
            objectName: "language"
            value: card.settings.appLang

            onChosen: value => card.settings.chooseLanguage(value)
        }
    }
}
