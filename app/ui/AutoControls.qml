import QtQuick
import QtQuick.Layouts
import Corvane

// A floor that follows the temperature.
ColumnLayout {
    id: controls

    required property FanController fan
    required property MenuState menu

    spacing: Theme.spaceSmall

    SegmentedControl {
        Layout.fillWidth: true
        accessibleName: Lang.isGerman ? "Kühlprofil" : "Cooling profile"
        model: [
            {
                label: Lang.isGerman ? "Leise" : "Silent",
                value: "silent"
            },
            {
                label: Lang.isGerman ? "Ausgewogen" : "Balanced",
                value: "balanced"
            },
            {
                label: "Max",
                value: "max"
            }
        ]
        objectName: "coolingProfile"
        value: controls.fan.coolingProfile

        onChosen: value => controls.fan.coolingProfile = value
    }

    CaptionText {
        objectName: "profileBlurb"
        text: controls.menu.profileBlurb
    }

    CoolingCurveView {
        Layout.fillWidth: true
        Layout.preferredHeight: 70
        color: Theme.accent
        currentTemp: controls.fan.cpuTempSmoothed ?? controls.fan.cpuTemp
        kind: controls.fan.coolingProfile
        objectName: "coolingCurve"
        tMax: 95
        tMin: 35
    }

    NoteRow {
        objectName: "autoStatus"
        role: controls.fan.autoEngaged ? "" : "green"
        symbol: "checkmark.circle.fill"
        text: controls.menu.autoStatusText
    }

    SpinUpBanner {
        fan: controls.fan
    }
}
