import QtQuick
import QtQuick.Layouts
import Corvane

// One of a few values, and what they are values of.
ColumnLayout {
    id: choice

    required property string text
    required property var model
    required property var value

    signal chosen(var value)

    Layout.fillWidth: true
    spacing: Theme.spaceTiny

    HeadingText {
        text: choice.text
    }

    SegmentedControl {
        Layout.fillWidth: true
        accessibleName: choice.text
        model: choice.model
        objectName: "segments"
        value: choice.value

        onChosen: value => choice.chosen(value)
    }
}
