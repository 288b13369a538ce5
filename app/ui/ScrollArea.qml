import QtQuick
import QtQuick.Templates as T
import Corvane

// Scrolls its content up and down when there is too little room, and to whatever the keyboard goes to. The content is
// as wide as the area.
Flickable {
    id: area

    default property alias content: holder.data

    function reveal(item: Item) {
        const top = item.mapToItem(holder, 0, 0).y;
        const bottom = top + item.height;
        if (top < contentY)
            contentY = Math.max(0, top - Theme.spaceSmall);
        else if (bottom > contentY + height)
            contentY = Math.min(contentHeight - height, bottom + Theme.spaceSmall - height);
    }

    function scrollBy(pixels: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, contentY + pixels));
    }

    function isInside(item: Item): bool {
        for (let above = item; above; above = above.parent) {
            if (above === holder)
                return true;
        }
        return false;
    }

    readonly property Item focused: Window.activeFocusItem

    onFocusedChanged: {
        if (focused && isInside(focused))
            reveal(focused);
    }

    boundsBehavior: Flickable.StopAtBounds
    clip: true
    contentHeight: holder.height
    contentWidth: width
    flickableDirection: Flickable.VerticalFlick
    implicitHeight: Math.ceil(holder.height)
    implicitWidth: holder.childrenRect.width

    T.ScrollBar.vertical: ThinScrollBar {}

    Item {
        id: holder

        height: childrenRect.height
        width: area.width
    }
}
