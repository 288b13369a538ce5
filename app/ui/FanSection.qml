pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The fans: the helper that they need, and then what the user asks of them.
ColumnLayout {
    id: section

    required property FanController fan
    required property MenuState menu

    Layout.fillWidth: true
    spacing: Theme.spaceSmall

    HelperPrompt {
        fan: section.fan
        visible: !section.fan.helperInstalled
    }

    BannerButton {
        objectName: "helperUpdate"
        symbol: "arrow.triangle.2.circlepath"
        text: Lang.isGerman ? "Helper-Update verfügbar — klicken" : "Helper update available — click"
        visible: section.fan.helperInstalled && section.fan.helperNeedsUpdate

        onClicked: section.fan.installHelper()
    }

    FeatureSection {
        emoji: "🌀"
        expanded: section.menu.expandFans
        isOn: section.fan.fansEnabled
        objectName: "fanSection"
        title: Lang.isGerman ? "Lüfter" : "Fans"
        visible: section.fan.helperInstalled

        onSetExpanded: expanded => section.menu.expandFans = expanded
        onSetOn: on => section.fan.fansEnabled = on

        content: FanControls {
            fan: section.fan
            menu: section.menu
        }
    }

    CaptionText {
        Layout.leftMargin: Theme.space
        Layout.rightMargin: Theme.space
        objectName: "statusMessage"
        text: section.fan.statusMessage
        visible: text !== ""
    }
}
