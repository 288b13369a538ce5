import QtQuick
import QtQuick.Layouts
import Corvane

// How hot the computer is, how that went, and how fast its fans turn.
Rectangle {
    id: view

    required property TemperatureBadge temperature

    readonly property color heat: Theme.roleColor(temperature.colorRole)

    Layout.fillWidth: true
    border.color: Theme.outline
    border.width: 1
    color: Theme.card
    implicitHeight: rows.implicitHeight + 2 * Theme.space
    radius: Theme.radiusLarge
    visible: temperature.isKnown || temperature.gpuTemperature !== "" || temperature.rpmLine !== "" || temperature.throttleLabel !== ""

    ColumnLayout {
        id: rows

        anchors.left: parent.left
        anchors.margins: Theme.space
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: Theme.spaceTiny

        RowLayout {
            spacing: Theme.spaceSmall
            visible: view.temperature.isKnown || view.temperature.gpuTemperature !== ""

            Text {
                Layout.alignment: Qt.AlignBaseline
                color: Theme.text
                font.pixelSize: Theme.displaySize
                font.weight: Font.DemiBold
                objectName: "temperature"
                text: view.temperature.temperature
                textFormat: Text.PlainText
                visible: view.temperature.isKnown

                Accessible.role: Accessible.StaticText
                Accessible.name: "CPU " + text
            }

            // The word's colour is one that can be read; this is the exact one.
            Rectangle {
                Layout.alignment: Qt.AlignBaseline
                baselineOffset: height + 1
                color: view.heat
                implicitHeight: 8
                implicitWidth: 8
                objectName: "temperatureDot"
                radius: 4
                visible: view.temperature.isKnown
            }

            BodyText {
                Layout.alignment: Qt.AlignBaseline
                color: Theme.roleTextColor(view.temperature.colorRole)
                font.weight: Font.DemiBold
                objectName: "temperatureWord"
                text: view.temperature.word
                visible: view.temperature.isKnown
            }

            BodyText {
                Layout.alignment: Qt.AlignBaseline
                Layout.fillWidth: false
                color: Theme.secondaryText
                objectName: "gpuTemperature"
                text: "GPU " + view.temperature.gpuTemperature
                visible: view.temperature.gpuTemperature !== ""
            }
        }

        Sparkline {
            Layout.fillWidth: true
            Layout.preferredHeight: 28
            color: view.heat
            objectName: "trend"
            values: view.temperature.trend
            visible: view.temperature.trend.length > 1
        }

        RowLayout {
            spacing: Theme.spaceSmall
            visible: view.temperature.rpmLine !== "" || view.temperature.throttleLabel !== ""

            CaptionText {
                objectName: "rpmLine"
                text: view.temperature.rpmLine
            }

            ThrottleBadge {
                label: view.temperature.throttleLabel
                objectName: "throttleBadge"
                role: view.temperature.throttleRole
            }
        }
    }
}
