import QtQuick
import Corvane

// Turns as long as it is seen. `text` says what is being done to those who cannot see it.
Rectangle {
    id: mark

    required property string text

    border.color: Theme.outline
    color: Theme.raised
    implicitHeight: 64
    implicitWidth: 64
    radius: Theme.radiusLarge

    Accessible.role: Accessible.Animation
    Accessible.name: text

    Symbol {
        anchors.centerIn: parent
        color: Theme.accent
        height: 28
        name: "arrow.triangle.2.circlepath"
        width: 28

        RotationAnimation on rotation {
            duration: 1600
            from: 0
            loops: Animation.Infinite
            running: mark.visible
            to: 360
        }
    }
}
