import QtQuick
import Corvane

// Leads to the newer version, while there is one. Its name comes from the network.
BannerButton {
    id: banner

    required property UpdateChecker updates

    symbol: "arrow.down.circle.fill"
    text: (Lang.isGerman ? "Update auf v%1 verfügbar — laden" : "Update to v%1 available — download").arg(updates.latestVersion)
    visible: updates.latestVersion !== ""

    onClicked: updates.openDownload()
}
