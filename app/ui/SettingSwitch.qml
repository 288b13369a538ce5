import QtQuick
import Corvane

// A setting that is on or off, and a hint at what it does; "" for none.
Column {
    id: setting

    required property string text
    required property bool isOn
    property string hint

    signal setOn(bool on)

    width: parent.width

    SwitchRow {
        isOn: setting.isOn
        text: setting.text
        width: parent.width

        onSetOn: on => setting.setOn(on)
    }

    CaptionText {
        objectName: "hint"
        text: setting.hint
        visible: text !== ""
        width: parent.width
    }
}
