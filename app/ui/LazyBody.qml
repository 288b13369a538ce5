import QtQuick
import QtQuick.Layouts
import Corvane

// Something that is made when it is first shown.
ColumnLayout {
    id: body

    required property Component content
    required property bool shown

    function make() {
        if (shown && children.length === 0)
            content.createObject(body);
    }

    spacing: 0
    visible: shown

    Component.onCompleted: make()
    onShownChanged: make()
}
