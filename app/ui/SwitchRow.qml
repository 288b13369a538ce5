import QtQuick
import QtQuick.Layouts
import Corvane

// A line with a switch.
RowLayout {
    id: row

    required property string text
    required property bool isOn
    // Shown before the text; "" for none.
    property string symbol

    signal setOn(bool on)

    Layout.fillWidth: true
    spacing: Theme.spaceSmall

    Symbol {
        Layout.preferredHeight: Theme.symbolSize
        Layout.preferredWidth: Theme.symbolSize
        color: Theme.secondaryText
        name: row.symbol
        visible: row.symbol !== ""
    }

    BodyText {
        text: row.text

        Accessible.ignored: true
    }

    PanelSwitch {
        accessibleName: row.text
        isOn: row.isOn
        objectName: "switch"

        onSetOn: on => row.setOn(on)
    }
}
