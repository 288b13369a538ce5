import QtQuick
import Corvane

// Offers a restart in the language that was just chosen.
AlertBox {
    required property SettingsState settings

    acceptText: Lang.isGerman ? "Jetzt neu starten" : "Restart now"
    objectName: "languageAlert"
    rejectText: Lang.isGerman ? "Später" : "Later"
    text: Lang.isGerman ? "Starte Corvane neu, damit die Sprache überall übernommen wird." : "Restart Corvane so the language applies everywhere."
    title: Lang.isGerman ? "Sprache geändert" : "Language changed"
    visible: settings.alert === "languageRestart"

    onAccepted: settings.restartNow()
    onRejected: settings.restartLater()
}
