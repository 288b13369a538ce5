import QtQuick
import Corvane

// Help, a way to the maker, and the way out.
SettingsCard {
    id: card

    required property SettingsState settings

    SettingsAction {
        objectName: "showIntroduction"
        symbol: "questionmark.circle"
        text: Lang.isGerman ? "Einführung erneut zeigen" : "Show intro again"

        onClicked: card.settings.showIntroduction()
    }

    SettingsAction {
        objectName: "sendFeedback"
        symbol: "envelope"
        text: Lang.isGerman ? "Feedback / Bug melden" : "Send feedback / report a bug"
        visible: card.settings.canSendFeedback

        onClicked: card.settings.sendFeedback()
    }

    SettingsAction {
        objectName: "uninstall"
        role: "red"
        symbol: "trash"
        text: Lang.isGerman ? "Corvane entfernen…" : "Uninstall Corvane…"

        onClicked: card.settings.askToUninstall()
    }

    CaptionText {
        objectName: "uninstallHint"
        text: Lang.isGerman ? "Entfernt Hintergrunddienst, App und Einstellungen vollständig." : "Completely removes the background helper, the app and its settings."
        width: parent.width
    }
}
