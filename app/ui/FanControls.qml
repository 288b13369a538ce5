pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// What the fans are asked for, by the user and by the automation.
ColumnLayout {
    id: controls

    required property FanController fan
    required property MenuState menu

    readonly property bool isAutomated: fan.triggerProfile !== ""

    spacing: Theme.spaceSmall

    BodyText {
        color: Theme.accent
        font.weight: Font.Medium
        objectName: "automationCooling"
        text: (Lang.isGerman ? "🤖 Auto-Kühlung aktiv · %1" : "🤖 Auto cooling active · %1").arg(controls.menu.fanProfileName)
        visible: controls.isAutomated
    }

    CaptionText {
        objectName: "fansOffText"
        text: {
            if (controls.isAutomated || controls.fan.autoEngaged)
                return Lang.isGerman ? "Corvane kühlt gerade automatisch (oben). Schalter an, um zusätzlich eine eigene Untergrenze zu setzen." : "Corvane is cooling automatically right now (above). Flip the switch to also set your own floor.";
            return Lang.isGerman ? "Aus — macOS regelt die Lüfter. Schalter an, und Corvane übernimmt mit fester Stärke oder Kühlkurve." : "Off — macOS controls the fans. Flip the switch and Corvane takes over with a fixed floor or a cooling curve.";
        }
        visible: !controls.fan.fansEnabled
    }

    SegmentedControl {
        Layout.fillWidth: true
        accessibleName: Lang.isGerman ? "Lüftersteuerung" : "Fan control"
        model: [
            {
                label: Lang.isGerman ? "Manuell" : "Manual",
                value: "manual"
            },
            {
                label: "Auto",
                value: "auto"
            }
        ]
        objectName: "coolingMode"
        value: controls.fan.coolingMode
        visible: controls.fan.fansEnabled

        onChosen: value => controls.fan.coolingMode = value
    }

    LazyBody {
        shown: controls.fan.fansEnabled && controls.fan.coolingMode === "manual"

        content: ManualControls {
            fan: controls.fan
            menu: controls.menu
        }
    }

    LazyBody {
        shown: controls.fan.fansEnabled && controls.fan.coolingMode === "auto"

        content: AutoControls {
            fan: controls.fan
            menu: controls.menu
        }
    }

    CaptionText {
        objectName: "automationCoolsHarder"
        text: Lang.isGerman ? "Die Automatik kühlt gerade stärker — deine Einstellung ist die Untergrenze." : "Automation is cooling harder right now — your setting is the floor."
        visible: controls.fan.fansEnabled && controls.menu.automationCoolsHarder
    }
}
