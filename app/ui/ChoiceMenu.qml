pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Templates as T
import Corvane

// A button that opens a menu of values, if there are any. The line of `value` is checked; leave it out when nothing is
// chosen yet.
PanelButton {
    id: control

    // Objects with `label` and `value`.
    required property var items
    property var value

    readonly property KeyboardReturn keyboard: KeyboardReturn {}

    signal chosen(var value)
    // The menu is about to be seen.
    signal opening

    function open() {
        opening();
        if (enabled)
            menu.open();
    }

    enabled: items.length > 0

    Keys.onDownPressed: open()
    onClicked: open()

    // What opens is an item of the menu's own.
    Binding {
        property: "name"
        target: menu.contentItem.parent.Accessible
        value: control.text
    }

    T.Menu {
        id: menu

        implicitWidth: Math.max(control.width, implicitContentWidth + leftPadding + rightPadding)
        implicitHeight: implicitContentHeight + topPadding + bottomPadding
        margins: Theme.spaceSmall
        padding: Theme.spaceTiny
        y: control.height + Theme.spaceTiny

        onAboutToShow: control.keyboard.keep(control)
        onClosed: control.keyboard.giveBack()
        onOpened: currentIndex = 0

        Repeater {
            model: control.items

            ChoiceMenuItem {
                required property var modelData

                isChosen: modelData.value === control.value
                text: modelData.label

                onTriggered: control.chosen(modelData.value)
            }
        }

        background: Rectangle {
            border.color: Theme.outline
            color: Theme.raised
            radius: Theme.radius
        }

        contentItem: ListView {
            clip: true
            currentIndex: menu.currentIndex
            implicitHeight: contentHeight
            implicitWidth: 200
            interactive: contentHeight > height
            model: menu.contentModel
        }
    }
}
