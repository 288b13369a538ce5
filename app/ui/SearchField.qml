import QtQuick
import QtQuick.Templates as T
import Corvane

// A line to type in what is looked for.
T.TextField {
    id: field

    color: Theme.text
    font.pixelSize: Theme.bodySize
    implicitHeight: Theme.controlHeight + 4
    implicitWidth: 200
    leftPadding: Theme.spaceSmall
    maximumLength: 100
    placeholderTextColor: Theme.secondaryText
    rightPadding: Theme.spaceSmall
    selectByMouse: true
    selectedTextColor: Theme.accentInk
    selectionColor: Theme.accent
    verticalAlignment: TextInput.AlignVCenter

    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    background: Rectangle {
        color: Theme.wellTint
        radius: Theme.radius

        FocusRing {
            control: field
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            color: field.placeholderTextColor
            font: field.font
            text: field.placeholderText
            textFormat: Text.PlainText
            visible: field.length === 0 && field.preeditText === ""
            x: field.leftPadding
        }
    }
}
