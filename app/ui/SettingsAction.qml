import QtQuick
import QtQuick.Layouts
import Corvane

// A button over the whole width of a card, whose symbol is in line with the card's texts.
PanelButton {
    Layout.fillWidth: true
    Layout.leftMargin: -Theme.spaceSmall
    Layout.rightMargin: -Theme.spaceSmall
}
