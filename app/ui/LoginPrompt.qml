import QtQuick
import Corvane

// Asks once whether to start at login.
SwitchRow {
    required property MenuState menu

    isOn: menu.loginOn
    objectName: "loginPrompt"
    symbol: "power"
    text: Lang.isGerman ? "Beim Login starten" : "Launch at login"
    visible: !menu.loginChoiceMade

    onSetOn: on => menu.answerLogin(on)
}
