import QtQuick
import QtQuick.Templates as T
import Corvane

// A button with a text, and a symbol before it if it has one. `kind` says how much it stands out: "plain" is text
// alone, "tinted" and "filled" have a surface. `role` is a colour role; "" is the accent colour.
T.AbstractButton {
    id: control

    property string symbol
    property string kind: "plain"
    property string role

    readonly property color tone: Theme.roleTextColor(role)
    readonly property color ink: kind === "filled" ? (role === "" ? Theme.onAccent : Theme.background) : tone

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    horizontalPadding: kind === "plain" ? Theme.spaceSmall : Theme.space
    verticalPadding: Theme.spaceTiny
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.role: Accessible.Button
    Accessible.name: text

    background: Rectangle {
        color: control.kind === "filled" ? control.tone : control.kind === "tinted" ? Theme.tint(control.tone, 0.12) : "transparent"
        radius: Theme.radius

        Rectangle {
            anchors.fill: parent
            color: control.down ? Theme.pressTint : control.hovered ? Theme.hoverTint : "transparent"
            radius: parent.radius

            Behavior on color {
                ColorAnimation {
                    duration: Theme.quick
                }
            }
        }

        FocusRing {
            control: control
            shown: control.visualFocus
        }
    }

    contentItem: Item {
        implicitWidth: line.implicitWidth
        implicitHeight: line.implicitHeight

        Row {
            id: line

            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.spaceSmall - 2
            x: control.kind === "plain" ? 0 : Math.max(0, Math.round((parent.width - implicitWidth) / 2))

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                color: control.ink
                height: Theme.symbolSize
                name: control.symbol
                visible: control.symbol !== ""
                width: Theme.symbolSize
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                color: control.ink
                font.pixelSize: Theme.bodySize
                font.weight: Font.Medium
                text: control.text
                textFormat: Text.PlainText
                width: Math.min(implicitWidth, control.availableWidth - x)
                wrapMode: Text.Wrap
            }
        }
    }
}
