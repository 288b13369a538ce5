import QtQuick
import QtQuick.Templates as T
import Corvane

// The text of `control`, in words, for whoever waits over it.
T.ToolTip {
    id: tip

    required property T.AbstractButton control

    delay: 600
    margins: Theme.spaceSmall
    padding: 6
    text: control.text
    visible: control.hovered && !control.down && text !== ""
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    x: control.width - width
    y: -height - Theme.spaceTiny

    background: Rectangle {
        border.color: Theme.outline
        color: Theme.raised
        radius: Theme.radiusSmall
    }

    contentItem: Text {
        color: Theme.text
        font.pixelSize: Theme.captionSize
        text: tip.text
        textFormat: Text.PlainText
    }
}
