import QtQuick

// Names what follows.
BodyText {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
    font.weight: Font.DemiBold

    Accessible.role: Accessible.Heading
}
