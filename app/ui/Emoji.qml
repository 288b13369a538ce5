import QtQuick
import Corvane

// A picture from the typeface of pictures. It adds nothing to what the text beside it says.
Text {
    font.family: "Noto Color Emoji"
    font.pixelSize: Theme.titleSize
    textFormat: Text.PlainText

    Accessible.ignored: true
}
