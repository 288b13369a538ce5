pragma ComponentBehavior: Bound
import QtQuick
import Corvane

// Where one is among several pages. No control.
Row {
    id: dots

    required property int count
    // From 0.
    required property int current
    required property color accent

    spacing: Theme.spaceSmall

    Accessible.name: (Lang.isGerman ? "Seite %1 von %2" : "Page %1 of %2").arg(current + 1).arg(count)
    Accessible.role: Accessible.StaticText

    Repeater {
        model: dots.count

        Rectangle {
            required property int index
            readonly property bool isCurrent: index === dots.current

            color: isCurrent ? dots.accent : Theme.tint(Theme.text, 0.24)
            height: 8
            objectName: "dot" + (index + 1)
            radius: height / 2
            width: isCurrent ? 24 : 8

            Behavior on width {
                NumberAnimation {
                    duration: 240
                    easing.type: Easing.OutCubic
                }
            }
            Behavior on color {
                ColorAnimation {
                    duration: 240
                }
            }
        }
    }
}
