import QtQuick
import Corvane

// The look of a banner: a symbol or a picture, and a text that wraps, on a tinted surface.
Rectangle {
    id: body

    property string symbol
    property string emoji
    required property string text
    // A colour role; "" is the accent colour.
    property string role
    property real tintOpacity: 0.12

    implicitHeight: Math.max(label.implicitHeight, Theme.symbolSize) + 2 * Theme.spaceSmall
    implicitWidth: label.x + label.implicitWidth + Theme.space
    color: Theme.tint(Theme.roleColor(role), tintOpacity)
    radius: Theme.radius

    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.roleTextColor(body.role)
        height: Theme.symbolSize
        name: body.symbol
        visible: body.symbol !== ""
        width: Theme.symbolSize
        x: Theme.space
    }

    Emoji {
        anchors.verticalCenter: parent.verticalCenter
        text: body.emoji
        visible: body.emoji !== ""
        x: Theme.space
    }

    Text {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        color: Theme.roleTextColor(body.role)
        font.pixelSize: Theme.bodySize - 1
        font.weight: Font.Medium
        text: body.text
        textFormat: Text.PlainText
        width: body.width - x - Theme.space
        wrapMode: Text.Wrap
        x: body.symbol !== "" || body.emoji !== "" ? Theme.space + 26 : Theme.space
    }
}
