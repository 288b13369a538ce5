import QtQuick
import Corvane

// Asks whether to remove Corvane.
AlertBox {
    required property SettingsState settings

    acceptText: Lang.isGerman ? "Entfernen" : "Uninstall"
    objectName: "uninstallAlert"
    rejectText: Lang.isGerman ? "Abbrechen" : "Cancel"
    text: Lang.isGerman ? "Entfernt wird: der Lüfter-Hintergrunddienst, die App selbst und alle Einstellungen. Die Lüftersteuerung geht sofort wieder an macOS zurück. Du wirst einmal nach deinem Passwort gefragt." : "This removes: the fan background helper, the app itself and all settings. Fan control immediately returns to macOS. You'll be asked for your password once."
    title: Lang.isGerman ? "Corvane wirklich entfernen?" : "Really uninstall Corvane?"
    visible: settings.alert === "confirmUninstall"

    onAccepted: settings.confirmUninstall()
    onRejected: settings.cancelUninstall()
}
