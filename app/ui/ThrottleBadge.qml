import QtQuick
import Corvane

// A state of the system in a word and a colour role. Nothing for an empty label.
Rectangle {
    id: badge

    required property string label
    required property string role

    color: Theme.tint(Theme.roleColor(role), 0.16)
    implicitHeight: 20
    implicitWidth: word.implicitWidth + 24
    radius: height / 2
    visible: label !== ""

    Accessible.role: Accessible.StaticText
    Accessible.name: label

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.roleColor(badge.role)
        height: 6
        radius: 3
        width: 6
        x: 8
    }

    Text {
        id: word

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.roleTextColor(badge.role)
        font.pixelSize: Theme.captionSize
        font.weight: Font.DemiBold
        text: badge.label
        textFormat: Text.PlainText
        x: 18
    }
}
