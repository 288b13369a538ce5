import QtQuick
import Corvane

// The firmware has taken over because of heat.
Banner {
    required property FanController fan

    emoji: "🔥"
    objectName: "thermalWarning"
    role: "orange"
    text: (Lang.isGerman ? "Mac übernimmt — Lüfter auf %1% wegen Hitze" : "Mac takes over — fans at %1% due to heat").arg(Math.round(fan.effectivePercent))
    tintOpacity: 0.15
    visible: fan.thermalOverride
}
