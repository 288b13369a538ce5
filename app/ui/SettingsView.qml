import QtQuick
import Corvane

// The settings window: what concerns the whole application and is not in the panel.
FocusScope {
    id: view

    required property SettingsState settings
    required property UpdateChecker updates

    focus: true
    implicitHeight: 540
    implicitWidth: 380

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ScrollArea {
        enabled: !view.settings.isRemoving
        height: view.height
        objectName: "scrollArea"
        width: view.width

        Column {
            bottomPadding: Theme.spaceSmall
            spacing: 10
            topPadding: Theme.spaceSmall
            width: parent.width - 2 * x
            x: Theme.spaceLarge

            Row {
                spacing: Theme.space

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.accent
                    height: 32
                    name: "gauge.with.dots.needle.bottom.50percent"
                    objectName: "gauge"
                    width: 32
                }

                Column {
                    BodyText {
                        font.pixelSize: Theme.titleSize
                        font.weight: Font.DemiBold
                        objectName: "name"
                        text: "Corvane"

                        Accessible.role: Accessible.Heading
                    }

                    CaptionText {
                        objectName: "version"
                        text: "v" + view.settings.version
                    }
                }
            }

            GeneralSettings {
                objectName: "general"
                settings: view.settings
            }

            UpdateSettings {
                objectName: "updates"
                settings: view.settings
                updates: view.updates
            }

            HelpSettings {
                objectName: "help"
                settings: view.settings
            }
        }
    }

    BusyMark {
        anchors.centerIn: parent
        objectName: "busy"
        text: Lang.isGerman ? "Corvane entfernen…" : "Uninstall Corvane…"
        visible: view.settings.isRemoving
    }

    LanguageAlert {
        settings: view.settings
    }

    UninstallAlert {
        settings: view.settings
    }

    RemovedAlert {
        settings: view.settings
    }

    UninstallFailedAlert {
        settings: view.settings
    }
}
