import QtQuick
import QtQuick.Layouts
import Corvane

Rectangle {
    Layout.fillWidth: true
    implicitHeight: 1
    color: Theme.separator
}
