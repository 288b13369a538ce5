import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// A banner that can be clicked.
T.AbstractButton {
    id: control

    property string symbol
    property string emoji
    property string role
    property real tintOpacity: 0.12

    Layout.fillWidth: true
    implicitWidth: implicitContentWidth
    implicitHeight: implicitContentHeight
    hoverEnabled: true

    Accessible.name: text
    Accessible.onPressAction: clicked()

    contentItem: BannerBody {
        emoji: control.emoji
        role: control.role
        symbol: control.symbol
        text: control.text
        tintOpacity: control.tintOpacity + (control.down ? 0.1 : control.hovered ? 0.05 : 0)

        FocusRing {
            control: control
            shown: control.visualFocus
        }
    }
}
