pragma ComponentBehavior: Bound
import QtQuick
import Corvane

// One of a few values. It always shows `value`; a click or an arrow key asks for another. The keyboard stops at the
// chosen segment only.
Rectangle {
    id: control

    // Objects with `label` and `value`.
    required property var model
    required property var value
    property string accessibleName

    readonly property int index: {
        for (let i = 0; i < model.length; ++i) {
            if (model[i].value === value)
                return i;
        }
        return -1;
    }

    signal chosen(var value)

    function choose(index: int) {
        if (index < 0 || index >= model.length)
            return;
        segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
        chosen(model[index].value);
    }

    implicitHeight: Theme.controlHeight
    implicitWidth: 240
    color: Theme.wellTint
    opacity: enabled ? 1 : Theme.disabledOpacity
    radius: Theme.radius

    Accessible.role: Accessible.Grouping
    Accessible.name: accessibleName

    // What lies under the chosen segment.
    Rectangle {
        // Among the segments. It is this that moves: what is laid out is where it belongs at once.
        property real position: Math.max(0, control.index)

        border.color: Theme.outline
        border.width: Theme.isDark ? 0 : 1
        color: Theme.isDark ? Theme.track : Theme.raised
        height: parent.height - 4
        radius: Theme.radiusSmall
        visible: control.index >= 0
        width: control.width / Math.max(1, segments.count) - 4
        x: position * control.width / Math.max(1, segments.count) + 2
        y: 2

        Behavior on position {
            NumberAnimation {
                duration: Theme.calm
                easing.type: Easing.OutCubic
            }
        }
    }

    Row {
        anchors.fill: parent

        Repeater {
            id: segments

            model: control.model

            ChoiceButton {
                id: segment

                required property var modelData
                required property int index

                activeFocusOnTab: isChosen || (control.index < 0 && index === 0)
                height: control.height
                isChosen: index === control.index
                objectName: String(modelData.value)
                text: modelData.label
                width: control.width / Math.max(1, segments.count)

                Keys.onLeftPressed: control.choose(index - 1)
                Keys.onRightPressed: control.choose(index + 1)
                onClicked: control.chosen(modelData.value)

                background: Item {
                    FocusRing {
                        control: segment
                        shown: segment.visualFocus
                    }
                }

                contentItem: Text {
                    color: segment.isChosen || segment.hovered ? Theme.text : Theme.secondaryText
                    font.pixelSize: Theme.bodySize - 1
                    font.weight: segment.isChosen ? Font.DemiBold : Font.Medium
                    horizontalAlignment: Text.AlignHCenter
                    text: segment.text
                    textFormat: Text.PlainText
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
