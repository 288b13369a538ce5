import QtQuick
import QtQuick.Layouts
import Corvane

// A setting that is on or off, and a hint at what it does; "" for none.
ColumnLayout {
    id: setting

    required property string text
    required property bool isOn
    property string hint

    signal setOn(bool on)

    Layout.fillWidth: true
    spacing: 0

    SwitchRow {
        isOn: setting.isOn
        text: setting.text

        onSetOn: on => setting.setOn(on)
    }

    CaptionText {
        objectName: "hint"
        text: setting.hint
        visible: text !== ""
    }
}
