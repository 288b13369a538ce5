pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// Lets the user choose one of the installed applications, over the whole panel. Told with `chosen`; closes by itself.
T.Popup {
    id: picker

    required property InstalledApplicationsModel applications

    readonly property KeyboardReturn keyboard: KeyboardReturn {}

    signal chosen(string identifier, string name)

    function choose() {
        const row = list.currentItem as ApplicationRow;
        if (row) {
            chosen(row.identifier, row.name);
            close();
        }
    }

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    focus: true
    height: Math.min(460, (parent ? parent.height : 460) - 2 * Theme.spaceLarge)
    modal: true
    objectName: "applicationPicker"
    padding: Theme.spaceLarge
    width: Math.min(348, (parent ? parent.width : 348) - 2 * Theme.spaceLarge)

    onAboutToShow: {
        keyboard.keep(parent.Window.activeFocusItem);
        search.clear();
        applications.load();
    }
    onClosed: keyboard.giveBack()
    onOpened: search.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.raised
        radius: Theme.radiusLarge
    }

    contentItem: ColumnLayout {
        spacing: Theme.space

        Accessible.role: Accessible.Dialog
        Accessible.name: Lang.isGerman ? "App auswählen…" : "Choose app…"

        SearchField {
            id: search

            Layout.fillWidth: true
            objectName: "applicationSearch"
            placeholderText: Lang.isGerman ? "Suchen" : "Search"

            Keys.onDownPressed: list.incrementCurrentIndex()
            Keys.onEnterPressed: picker.choose()
            Keys.onReturnPressed: picker.choose()
            Keys.onUpPressed: list.decrementCurrentIndex()
            onTextChanged: picker.applications.filter = text
        }

        ListView {
            id: list

            Layout.fillHeight: true
            Layout.fillWidth: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            keyNavigationEnabled: true
            model: picker.applications
            objectName: "applicationList"

            Accessible.role: Accessible.List
            Accessible.name: "Apps"

            Keys.onEnterPressed: picker.choose()
            Keys.onReturnPressed: picker.choose()
            onCountChanged: currentIndex = count > 0 ? 0 : -1

            T.ScrollBar.vertical: ThinScrollBar {}

            delegate: ApplicationRow {
                width: list.width

                onClicked: list.currentIndex = index
                onDoubleClicked: {
                    list.currentIndex = index;
                    picker.choose();
                }
            }

            BodyText {
                anchors.centerIn: parent
                color: Theme.secondaryText
                horizontalAlignment: Text.AlignHCenter
                objectName: "noApplications"
                text: {
                    if (!picker.applications.isEmpty)
                        return Lang.isGerman ? "Keine App passt zur Suche" : "No app matches the search";
                    if (picker.applications.isLoading)
                        return Lang.isGerman ? "Apps werden gesucht …" : "Looking for apps …";
                    return Lang.isGerman ? "Keine Apps gefunden" : "No apps found";
                }
                visible: list.count === 0
                width: parent.width - 2 * Theme.spaceLarge
            }
        }

        RowLayout {
            spacing: Theme.spaceSmall

            PanelButton {
                Layout.fillWidth: true
                kind: "tinted"
                objectName: "cancelApplication"
                text: Lang.isGerman ? "Abbrechen" : "Cancel"

                onClicked: picker.close()
            }

            PanelButton {
                Layout.fillWidth: true
                enabled: list.currentIndex >= 0
                kind: "filled"
                objectName: "chooseApplication"
                text: Lang.isGerman ? "Auswählen" : "Choose"

                onClicked: picker.choose()
            }
        }
    }
}
