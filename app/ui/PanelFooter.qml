import QtQuick
import QtQuick.Layouts
import Corvane

// What concerns the whole application.
RowLayout {
    id: footer

    required property SleepManager manager
    required property MenuState menu

    Layout.fillWidth: true
    spacing: Theme.spaceTiny

    BodyText {
        color: Theme.secondaryText
        font.weight: Font.Medium
        text: "Corvane"
    }

    PanelButton {
        objectName: "stopEverything"
        symbol: "stop.circle"
        text: Lang.isGerman ? "Alles beenden" : "Stop everything"
        visible: footer.manager.anythingActive

        onClicked: footer.manager.resetAll()
    }

    IconButton {
        objectName: "settings"
        symbol: "gearshape"
        text: Lang.isGerman ? "Einstellungen" : "Settings"

        onClicked: footer.menu.showSettings()
    }

    IconButton {
        objectName: "guide"
        symbol: "questionmark.circle"
        text: Lang.isGerman ? "Anleitung anzeigen" : "Show guide"

        onClicked: footer.menu.showGuide()
    }

    IconButton {
        objectName: "quit"
        role: "red"
        symbol: "power.circle.fill"
        text: Lang.isGerman ? "Corvane beenden" : "Quit Corvane"

        onClicked: footer.menu.quit()
    }
}
