import QtQuick
import Corvane

// Says why Corvane could not be removed.
AlertBox {
    required property SettingsState settings

    acceptText: "OK"
    objectName: "uninstallFailedAlert"
    symbol: "exclamationmark.triangle.fill"
    text: settings.uninstallError
    title: Lang.isGerman ? "Entfernen fehlgeschlagen" : "Uninstall failed"
    visible: settings.alert === "uninstallFailed"

    onAccepted: settings.dismissFailure()
    onRejected: settings.dismissFailure()
}
