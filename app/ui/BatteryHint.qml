import QtQuick
import Corvane

// What the user started is draining the battery.
Banner {
    required property MenuState menu

    role: "orange"
    symbol: "bolt.slash.fill"
    text: Lang.isGerman ? "Auf Akku — Wachhalten/Boost zieht Strom. Netzteil empfohlen." : "On battery — keep-awake/boost drains power. Plugging in recommended."
    tintOpacity: 0.12
    visible: menu.batteryHint
}
