import QtQuick
import QtQuick.Layouts
import Corvane

// A short remark with a symbol, in the colour of its role; "" is the accent colour.
RowLayout {
    id: note

    required property string symbol
    required property string text
    property string role

    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.preferredHeight: Theme.symbolSize
        Layout.preferredWidth: Theme.symbolSize
        color: Theme.roleTextColor(note.role)
        name: note.symbol
    }

    CaptionText {
        color: Theme.roleTextColor(note.role)
        text: note.text
    }
}
