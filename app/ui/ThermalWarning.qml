import QtQuick
import Corvane

// The firmware has taken over because of heat.
Banner {
    required property FanController fan
    required property MenuState menu

    emoji: "🔥"
    objectName: "thermalWarning"
    role: "orange"
    text: menu.thermalWarning
    tintOpacity: 0.15
    visible: fan.thermalOverride
}
