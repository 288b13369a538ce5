import QtQuick
import QtQuick.Layouts
import Corvane

// Asks for the fan helper to be installed.
Rectangle {
    id: prompt

    required property FanController fan

    Layout.fillWidth: true
    border.color: Theme.outline
    border.width: 1
    color: Theme.card
    implicitHeight: rows.implicitHeight + 2 * Theme.space
    radius: Theme.radiusLarge

    ColumnLayout {
        id: rows

        anchors.left: parent.left
        anchors.margins: Theme.space
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.spaceSmall

        BodyText {
            objectName: "helperPrompt"
            text: Lang.isGerman ? "Einmalige Installation eines Hilfswerkzeugs nötig — danach kein Passwort mehr." : "A one-time helper install is needed — no password after that."
        }

        PanelButton {
            Layout.fillWidth: true
            kind: "filled"
            objectName: "installHelper"
            symbol: "arrow.down.app"
            text: Lang.isGerman ? "Helper installieren…" : "Install helper…"

            onClicked: prompt.fan.installHelper()
        }
    }
}
