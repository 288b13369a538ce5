import QtQuick
import QtQuick.Layouts
import Corvane

// The panel: everything that Corvane does, and the controls for it. As high as its content, up to `availableHeight`;
// then the sections scroll between header and footer.
FocusScope {
    id: view

    required property SleepManager manager
    required property FanController fan
    required property UpdateChecker updates
    required property TriggerManager triggers
    required property LidManager lid
    required property DriveManager drives
    required property MenuState menu
    required property StatusHeader header
    required property TemperatureBadge temperature
    required property InstalledApplicationsModel applications
    property real availableHeight: Infinity

    // The user is done with the panel.
    signal closeRequested

    focus: true
    implicitHeight: Math.min(availableHeight, frame.implicitHeight)
    implicitWidth: 380

    Keys.onEscapePressed: closeRequested()

    Rectangle {
        anchors.fill: parent
        border.color: Theme.outline
        color: Theme.background
    }

    ColumnLayout {
        id: frame

        anchors.fill: parent
        spacing: 0

        StatusHeaderView {
            Layout.fillWidth: true
            Layout.margins: Theme.spaceLarge
            Layout.bottomMargin: Theme.space
            header: view.header
            menu: view.menu
            objectName: "statusHeader"
        }

        ScrollArea {
            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.minimumHeight: 0
            Layout.preferredHeight: implicitHeight
            objectName: "scrollArea"

            ColumnLayout {
                spacing: Theme.spaceSmall
                width: parent.width - 2 * x
                x: Theme.spaceLarge

                UpdateBanner {
                    objectName: "updateBanner"
                    updates: view.updates
                }

                Divider {
                    Layout.bottomMargin: Theme.spaceTiny
                }

                KeepAwakeSection {
                    manager: view.manager
                    menu: view.menu
                    objectName: "keepAwakeSection"
                }

                ClosedLidSection {
                    fan: view.fan
                    lid: view.lid
                    menu: view.menu
                    objectName: "closedLidSection"
                }

                AutomationSection {
                    menu: view.menu
                    objectName: "automationSection"
                    triggers: view.triggers

                    onPickApp: picker.open()
                }

                DrivesSection {
                    drives: view.drives
                    menu: view.menu
                    objectName: "drivesSection"
                }

                BatteryHint {
                    menu: view.menu
                    objectName: "batteryHint"
                }

                Divider {
                    Layout.bottomMargin: Theme.spaceTiny
                    Layout.topMargin: Theme.spaceTiny
                }

                TemperatureBadgeView {
                    objectName: "temperatureBadge"
                    temperature: view.temperature
                }

                FanSection {
                    Layout.bottomMargin: Theme.space
                    fan: view.fan
                    menu: view.menu
                }
            }
        }

        Divider {}

        LoginPrompt {
            Layout.leftMargin: Theme.spaceLarge
            Layout.rightMargin: Theme.spaceLarge + Theme.space
            Layout.topMargin: Theme.spaceSmall
            menu: view.menu
        }

        PanelFooter {
            Layout.bottomMargin: Theme.spaceSmall
            Layout.leftMargin: Theme.spaceLarge
            Layout.rightMargin: Theme.space
            Layout.topMargin: Theme.spaceSmall
            manager: view.manager
            menu: view.menu
            objectName: "footer"
        }
    }

    LidWarning {
        menu: view.menu
    }

    ApplicationPicker {
        id: picker

        applications: view.applications

        onChosen: (identifier, name) => view.triggers.addApp(identifier, name)
    }
}
