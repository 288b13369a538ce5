import QtQuick
import QtQuick.Layouts
import Corvane

// The settings window: what concerns the whole application and is not in the panel.
FocusScope {
    id: view

    required property SettingsState settings
    required property UpdateChecker updates

    focus: true

    Rectangle {
        anchors.fill: parent
        color: Theme.background
    }

    ScrollArea {
        anchors.fill: parent
        enabled: !view.settings.isRemoving
        objectName: "scrollArea"

        ColumnLayout {
            spacing: Theme.space
            width: parent.width - 2 * x
            x: Theme.spaceLarge

            RowLayout {
                Layout.topMargin: Theme.space
                spacing: Theme.space

                Symbol {
                    Layout.preferredHeight: 32
                    Layout.preferredWidth: 32
                    color: Theme.accent
                    name: "gauge.with.dots.needle.bottom.50percent"
                    objectName: "gauge"
                }

                ColumnLayout {
                    spacing: 0

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
                Layout.bottomMargin: Theme.space
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
