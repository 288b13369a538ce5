pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// Durations to choose from, in one line. `selectedSeconds` is the chosen one; anything else is none.
RowLayout {
    id: chips

    required property var choices
    required property int selectedSeconds

    signal chosen(int seconds)

    Layout.fillWidth: true
    spacing: 6

    Repeater {
        model: chips.choices

        DurationChip {
            required property var modelData

            Layout.fillWidth: true
            isSelected: modelData.seconds === chips.selectedSeconds
            label: modelData.label
            objectName: "duration-" + modelData.seconds

            onClicked: chips.chosen(modelData.seconds)
        }
    }
}
