import QtQuick
import Corvane

// Names what follows.
BodyText {
    color: Theme.secondaryText
    font.pixelSize: Theme.captionSize
    font.weight: Font.DemiBold

    Accessible.role: Accessible.Heading
}
