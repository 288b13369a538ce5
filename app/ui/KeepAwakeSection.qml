pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The user's session: what it prevents, and when it ends.
FeatureSection {
    id: section

    required property SleepManager manager
    required property MenuState menu

    emoji: "☀️"
    expanded: menu.expandAwake
    isOn: manager.activeKinds.length > 0
    title: Lang.isGerman ? "Wach bleiben" : "Stay awake"

    onSetExpanded: expanded => menu.expandAwake = expanded
    onSetOn: on => menu.toggleAwake(on)

    content: ColumnLayout {
        spacing: Theme.spaceSmall

        KindRows {
            manager: section.manager
        }

        HeadingText {
            text: Lang.isGerman ? "Wach bleiben für" : "Stay awake for"
        }

        DurationChips {
            choices: section.menu.sleepDurations
            selectedSeconds: section.menu.selectedSleepSeconds

            onChosen: seconds => section.menu.applySleepDuration(seconds)
        }

        CustomEndTime {
            menu: section.menu
        }
    }
}
