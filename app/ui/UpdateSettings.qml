import QtQuick
import Corvane

// Looks for a newer version, where there is a feed to ask. The version's name comes from the network.
SettingsCard {
    id: card

    required property SettingsState settings
    required property UpdateChecker updates

    title: "Updates"
    visible: updates.canCheck

    SettingsAction {
        objectName: "checkForUpdates"
        symbol: "arrow.triangle.2.circlepath"
        text: Lang.isGerman ? "Nach Updates suchen" : "Check for updates"

        onClicked: card.settings.checkForUpdates()
    }

    SettingsAction {
        kind: "tinted"
        objectName: "downloadUpdate"
        symbol: "arrow.down.circle.fill"
        text: (Lang.isGerman ? "Update auf v%1 laden" : "Download update v%1").arg(card.updates.latestVersion)
        visible: card.updates.latestVersion !== ""

        onClicked: card.updates.openDownload()
    }

    NoteRow {
        objectName: "newestVersion"
        role: "green"
        symbol: "checkmark.circle.fill"
        text: Lang.isGerman ? "Du hast die neueste Version." : "You're on the latest version."
        visible: card.settings.checkedOnce && !card.settings.checking && card.updates.latestVersion === ""
        width: parent.width
    }
}
