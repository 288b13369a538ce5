import Corvane

// An explanation, smaller and fainter than what it explains.
BodyText {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
}
