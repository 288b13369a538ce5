import QtQuick
import QtQuick.Layouts
import Corvane

// A floor of a fixed strength, for a while.
ColumnLayout {
    id: controls

    required property FanController fan
    required property MenuState menu

    spacing: Theme.spaceSmall

    RowLayout {
        BodyText {
            text: Lang.isGerman ? "Feste Stärke" : "Fixed strength"

            Accessible.ignored: true
        }

        BodyText {
            Layout.fillWidth: false
            font.weight: Font.DemiBold
            objectName: "strength"
            text: controls.menu.manualSliderText
        }
    }

    PanelSlider {
        Layout.fillWidth: true
        accessibleName: Lang.isGerman ? "Feste Stärke" : "Fixed strength"
        from: 0
        objectName: "strengthSlider"
        shown: controls.menu.manualSlider
        stepSize: 5
        to: 100

        onChosen: value => controls.menu.manualSlider = value
        onReleased: controls.menu.releaseSlider()
    }

    HeadingText {
        text: Lang.isGerman ? "Boost-Dauer" : "Boost duration"
    }

    DurationChips {
        choices: controls.menu.fanDurations
        selectedSeconds: controls.fan.boostDuration

        onChosen: seconds => controls.menu.applyFanDuration(seconds)
    }

    CaptionText {
        color: Theme.accent
        font.weight: Font.DemiBold
        objectName: "boostRemaining"
        text: (Lang.isGerman ? "⏱ Boost noch %1" : "⏱ Boost: %1 left").arg(controls.fan.boostRemainingText)
        visible: controls.fan.boostRemainingText !== ""
    }

    CaptionText {
        color: Theme.roleTextColor("orange")
        objectName: "longBoostWarning"
        text: Lang.isGerman ? "⚠️ Dauer-Boost ist selten nötig — der Hitzeschutz regelt echte Wärme automatisch hoch. Lange 100% = unnötige Lautstärke." : "⚠️ A long boost is rarely needed — heat protection ramps up real heat automatically. Long 100% = needless noise."
        visible: controls.menu.showsLongBoostWarning
    }

    SpinUpBanner {
        fan: controls.fan
    }

    ThermalWarning {
        fan: controls.fan
        menu: controls.menu
    }
}
