import QtQuick
import Corvane

// Shows which control the keyboard is at. `control` is what it surrounds; its background holds the ring.
Rectangle {
    required property Item control
    property bool shown: control.activeFocus

    anchors.fill: parent
    anchors.margins: -2
    border.color: Theme.accent
    border.width: 2
    color: "transparent"
    radius: Theme.radius
    visible: shown
}
