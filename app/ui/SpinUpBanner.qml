import QtQuick
import Corvane

// The fans have been asked and are on their way.
Banner {
    required property FanController fan

    emoji: "🚀"
    objectName: "spinUpBanner"
    text: {
        if (fan.spinUpRemaining === undefined)
            return Lang.isGerman ? "Lüfter starten gleich …" : "Fans starting any moment …";
        return (Lang.isGerman ? "Lüfter fahren hoch … %1s" : "Fans spinning up … %1s").arg(fan.spinUpRemaining);
    }
    tintOpacity: 0.12
    visible: fan.spinningUp
}
