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
    readonly property color ink: kind === "filled" ? (role === "" ? Theme.accentInk : Theme.background) : tone

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + topPadding + bottomPadding)
    horizontalPadding: kind === "plain" ? Theme.spaceSmall : Theme.space
    verticalPadding: Theme.spaceTiny
    hoverEnabled: true
    opacity: enabled ? 1 : Theme.disabledOpacity

    Accessible.name: text
    Accessible.onPressAction: clicked()

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
        id: content

        readonly property real textStart: control.symbol === "" ? 0 : Theme.symbolSize + 6
        readonly property real lineWidth: textStart + label.width

        implicitWidth: textStart + label.implicitWidth
        implicitHeight: label.implicitHeight

        Item {
            anchors.verticalCenter: parent.verticalCenter
            height: label.height
            width: content.lineWidth
            x: control.kind === "plain" ? 0 : Math.round((content.width - content.lineWidth) / 2)

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                color: control.ink
                height: Theme.symbolSize
                name: control.symbol
                width: Theme.symbolSize
            }

            Text {
                id: label

                color: control.ink
                font.pixelSize: Theme.bodySize
                font.weight: Font.Medium
                text: control.text
                textFormat: Text.PlainText
                width: Math.min(Math.ceil(implicitWidth), content.width - content.textStart)
                wrapMode: Text.Wrap
                x: content.textStart
            }
        }
    }
}
