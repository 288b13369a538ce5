import QtQuick
import Corvane

// The last thing that Corvane says.
AlertBox {
    required property SettingsState settings

    acceptText: Lang.isGerman ? "Beenden" : "Quit"
    objectName: "removedAlert"
    text: Lang.isGerman ? "Danke, dass du es ausprobiert hast! Die App wird jetzt beendet." : "Thanks for trying it! The app will now quit."
    title: Lang.isGerman ? "Corvane wurde entfernt" : "Corvane has been removed"
    visible: settings.alert === "removed"

    onAccepted: settings.sayGoodbye()
    onRejected: settings.sayGoodbye()
}
