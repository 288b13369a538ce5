import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// A question over the whole view, which waits for the answer. Bind `visible`; Enter accepts, Escape rejects, and the
// box stays until `visible` says otherwise. A long text scrolls, with the arrow keys too.
T.Dialog {
    id: box

    required property string text
    required property string acceptText
    // "" where there is nothing to decide.
    property string rejectText
    // Of something bad, in red before the title; "" for none.
    property string symbol

    readonly property KeyboardReturn keyboard: KeyboardReturn {}
    readonly property int scrollStep: 48

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Dialog.NoAutoClose
    focus: true
    height: Math.min(implicitHeight, (parent ? parent.height : implicitHeight) - 2 * Theme.spaceLarge)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    modal: true
    padding: Theme.spaceLarge
    width: Math.min(320, (parent ? parent.width : 320) - 2 * Theme.spaceLarge)

    onAboutToShow: keyboard.keep(parent.Window.activeFocusItem)
    onClosed: keyboard.giveBack()
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

        Keys.onDownPressed: area.scrollBy(box.scrollStep)
        Keys.onEscapePressed: box.rejected()
        Keys.onUpPressed: area.scrollBy(-box.scrollStep)

        RowLayout {
            spacing: Theme.spaceSmall

            Symbol {
                Layout.alignment: Qt.AlignTop
                Layout.topMargin: 1
                color: Theme.roleTextColor("red")
                name: box.symbol
                visible: name !== ""
            }

            BodyText {
                font.pixelSize: Theme.titleSize
                font.weight: Font.DemiBold
                text: box.title
            }
        }

        ScrollArea {
            id: area

            Layout.fillHeight: true
            Layout.fillWidth: true
            Layout.preferredHeight: implicitHeight
            objectName: "alertArea"

            BodyText {
                color: Theme.secondaryText
                font.pixelSize: Theme.bodySize - 1
                objectName: "alertText"
                text: box.text
                width: parent.width
            }
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
            visible: text !== ""

            Keys.onEnterPressed: box.rejected()
            Keys.onReturnPressed: box.rejected()
            onClicked: box.rejected()
        }
    }
}
