import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// A question over the whole panel, which waits for the answer. Bind `visible`; Enter accepts, Escape rejects, and the
// box stays until `visible` says otherwise.
T.Dialog {
    id: box

    required property string text
    required property string acceptText
    required property string rejectText

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Dialog.NoAutoClose
    focus: true
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    modal: true
    padding: Theme.spaceLarge
    width: Math.min(320, (parent ? parent.width : 320) - 2 * Theme.spaceLarge)

    onOpened: accept.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    enter: Transition {
        NumberAnimation {
            duration: Theme.calm
            from: 0
            property: "opacity"
            to: 1
        }
    }
    exit: Transition {
        NumberAnimation {
            duration: Theme.quick
            property: "opacity"
            to: 0
        }
    }

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.raised
        radius: Theme.radiusLarge
    }

    contentItem: ColumnLayout {
        spacing: Theme.spaceSmall

        Accessible.role: Accessible.AlertMessage
        Accessible.name: box.title
        Accessible.description: box.text

        Keys.onEscapePressed: box.rejected()

        BodyText {
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            text: box.title
        }

        BodyText {
            color: Theme.secondaryText
            font.pixelSize: Theme.bodySize - 1
            text: box.text
        }

        PanelButton {
            id: accept

            Layout.fillWidth: true
            Layout.topMargin: Theme.spaceSmall
            kind: "filled"
            objectName: "alertAccept"
            text: box.acceptText

            Keys.onEnterPressed: box.accepted()
            Keys.onReturnPressed: box.accepted()
            onClicked: box.accepted()
        }

        PanelButton {
            Layout.fillWidth: true
            kind: "tinted"
            objectName: "alertReject"
            text: box.rejectText

            Keys.onEnterPressed: box.rejected()
            Keys.onReturnPressed: box.rejected()
            onClicked: box.rejected()
        }
    }
}
