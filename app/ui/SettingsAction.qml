import QtQuick
import Corvane

// A button over the whole width of a card, whose symbol is in line with the card's texts.
PanelButton {
    horizontalPadding: 0
    leftInset: -Theme.spaceSmall
    rightInset: -Theme.spaceSmall
    width: parent.width
}
