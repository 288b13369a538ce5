import QtQuick
import QtQuick.Layouts
import Corvane

// A text in the panel's ordinary size. It wraps and is never cut off.
Text {
    Layout.fillWidth: true
    color: Theme.text
    font.pixelSize: Theme.bodySize
    lineHeight: 1.15
    textFormat: Text.PlainText
    wrapMode: Text.Wrap

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
