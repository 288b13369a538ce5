import QtQuick
import QtQuick.Layouts
import Corvane

// What Corvane does at the moment, and the battery.
RowLayout {
    id: view

    required property StatusHeader header
    required property MenuState menu

    spacing: Theme.space

    Symbol {
        Layout.alignment: Qt.AlignTop
        Layout.preferredHeight: 32
        Layout.preferredWidth: 32
        color: view.header.active ? Theme.accent : Theme.secondaryText
        name: view.header.active ? "gauge.with.dots.needle.bottom.100percent" : "gauge.with.dots.needle.bottom.50percent"
        objectName: "stateIcon"
    }

    ColumnLayout {
        spacing: 1

        BodyText {
            font.pixelSize: Theme.titleSize
            font.weight: Font.DemiBold
            text: "Corvane"

            Accessible.role: Accessible.Heading
        }

        BodyText {
            color: view.header.active ? Theme.accent : Theme.secondaryText
            font.pixelSize: Theme.bodySize - 1
            objectName: "statusLabel"
            text: view.header.label
        }

        CaptionText {
            objectName: "sessionLine"
            text: view.header.sessionLine
            visible: text !== ""
        }

        CaptionText {
            objectName: "automationLine"
            text: view.header.automationLine
            visible: text !== ""
        }
    }

    BatteryBadge {
        Layout.alignment: Qt.AlignTop
        charge: view.menu.batteryCharge
        isLow: view.menu.batteryIsLow
        objectName: "batteryBadge"
        symbol: view.menu.batterySymbol
        visible: view.menu.batteryVisible
    }
}
