import QtQuick
import Corvane

// A battery: its symbol and, when it is known, its charge.
Rectangle {
    id: badge

    required property string symbol
    required property string charge
    required property bool isLow

    readonly property color ink: isLow ? Theme.roleTextColor("red") : Theme.secondaryText

    color: isLow ? Theme.tint(Theme.roleColor("red"), 0.12) : Theme.wellTint
    implicitHeight: 24
    implicitWidth: line.implicitWidth + 2 * Theme.spaceSmall
    radius: height / 2

    Accessible.role: Accessible.StaticText
    Accessible.name: (Lang.isGerman ? "Akku" : "Battery") + (charge === "" ? "" : " " + charge)

    Row {
        id: line

        anchors.centerIn: parent
        spacing: Theme.spaceTiny

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: badge.ink
            name: badge.symbol
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: badge.ink
            font.pixelSize: Theme.captionSize
            font.weight: Font.DemiBold
            objectName: "batteryCharge"
            text: badge.charge
            textFormat: Text.PlainText
            visible: text !== ""

            Accessible.ignored: true
        }
    }
}
