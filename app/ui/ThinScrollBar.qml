import QtQuick
import QtQuick.Templates as T
import Corvane

T.ScrollBar {
    id: control

    implicitWidth: 8
    implicitHeight: 8
    hoverEnabled: true
    padding: 2
    visible: size < 1

    contentItem: Rectangle {
        color: Theme.secondaryText
        implicitWidth: 4
        implicitHeight: 4
        opacity: control.pressed ? 0.7 : control.hovered ? 0.5 : 0.3
        radius: 2

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.quick
            }
        }
    }
}
