import QtQuick
import Corvane

// Asks before the closed-lid mode is switched on for the first time.
AlertBox {
    required property MenuState menu

    acceptText: Lang.isGerman ? "Aktivieren" : "Enable"
    objectName: "lidWarning"
    rejectText: Lang.isGerman ? "Abbrechen" : "Cancel"
    text: Lang.isGerman ? "Dein Mac läuft mit geschlossenem Deckel weiter — ideal für Uploads oder Renders über Nacht.\n\nAchtung: Zugeklappt staut sich Wärme. Corvane dreht die Lüfter automatisch hoch und schaltet bei zu viel Hitze oder niedrigem Akku selbst ab. Am Netzteil empfohlen." : "Your Mac keeps running with the lid shut — ideal for overnight uploads or renders.\n\nNote: a closed lid traps heat. Corvane auto-ramps the fans and switches off on excess heat or low battery. AC power recommended."
    title: Lang.isGerman ? "Zugeklappt wach halten?" : "Keep the Mac awake with the lid closed?"
    visible: menu.isAskingAboutLid

    onAccepted: menu.answerLidWarning(true)
    onRejected: menu.answerLidWarning(false)
}
