import QtQuick
import QtQuick.Layouts
import Corvane

// All controls at once, to be looked at.
Rectangle {
    id: gallery

    color: Theme.background
    implicitHeight: column.implicitHeight + 2 * Theme.spaceLarge
    implicitWidth: 2 * 380

    RowLayout {
        id: column

        anchors.left: parent.left
        anchors.margins: Theme.spaceLarge
        anchors.right: parent.right
        anchors.top: parent.top
        spacing: 2 * Theme.spaceLarge

        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            Layout.preferredWidth: 348
            spacing: Theme.spaceSmall

            FeatureSection {
                emoji: "☀️"
                expanded: true
                isOn: true
                title: Lang.isGerman ? "Wach bleiben" : "Stay awake"

                content: ColumnLayout {
                    spacing: Theme.spaceTiny

                    ModeRow {
                        isOn: true
                        symbol: "desktopcomputer"
                        title: Lang.isGerman ? "System wach halten" : "Keep system awake"
                    }

                    ModeRow {
                        isOn: false
                        subtitle: Lang.isGerman ? "Nur solange Downloads laufen" : "Only while downloads run"
                        symbol: "network"
                        title: Lang.isGerman ? "Netzwerk aktiv halten" : "Keep network active"
                    }

                    HeadingText {
                        text: Lang.isGerman ? "Wach bleiben für" : "Stay awake for"
                    }

                    Row {
                        spacing: 6

                        Repeater {
                            model: ["1 h", "4 h", "8 h", "12 h", "24 h"]

                            DurationChip {
                                required property string modelData

                                isSelected: modelData === "8 h"
                                label: modelData
                            }
                        }
                    }

                    PanelButton {
                        symbol: "calendar.badge.clock"
                        text: Lang.isGerman ? "Eigene Endzeit…" : "Custom end time…"
                    }

                    DateTimePicker {
                        value: new Date(2026, 2, 18, 7, 30)
                    }
                }
            }

            FeatureSection {
                emoji: "💻"
                expanded: false
                isOn: false
                switchDisabled: true
                title: Lang.isGerman ? "Zugeklappt wach halten" : "Awake, lid closed"
                content: Item {}
            }

            Banner {
                role: "orange"
                symbol: "bolt.slash.fill"
                text: Lang.isGerman ? "Auf Akku — Wachhalten/Boost zieht Strom. Netzteil empfohlen." : "On battery — keep-awake/boost drains power. Plugging in recommended."
            }

            BannerButton {
                symbol: "arrow.down.circle.fill"
                text: Lang.isGerman ? "Update auf v2.0 verfügbar — laden" : "Update to v2.0 available — download"
            }
        }

        ColumnLayout {
            Layout.alignment: Qt.AlignTop
            Layout.preferredWidth: 348
            spacing: Theme.spaceSmall

            FeatureSection {
                emoji: "🌀"
                expanded: true
                isOn: true
                title: Lang.isGerman ? "Lüfter" : "Fans"

                content: ColumnLayout {
                    spacing: Theme.spaceSmall

                    SegmentedControl {
                        Layout.fillWidth: true
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
                        value: "auto"
                    }

                    RowLayout {
                        BodyText {
                            text: Lang.isGerman ? "Feste Stärke" : "Fixed strength"
                        }

                        BodyText {
                            Layout.fillWidth: false
                            font.weight: Font.DemiBold
                            text: "65%"
                        }
                    }

                    PanelSlider {
                        Layout.fillWidth: true
                        accessibleName: "Fixed strength"
                        from: 0
                        shown: 65
                        stepSize: 5
                        to: 100
                    }

                    SegmentedControl {
                        Layout.fillWidth: true
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
                        value: "balanced"
                    }

                    CoolingCurveView {
                        Layout.fillWidth: true
                        currentTemp: 64
                        kind: "balanced"
                        tMax: 95
                        tMin: 35
                    }

                    Banner {
                        emoji: "🚀"
                        text: Lang.isGerman ? "Lüfter fahren hoch … 12s" : "Fans spinning up … 12s"
                    }

                    Banner {
                        emoji: "🔥"
                        role: "orange"
                        text: Lang.isGerman ? "Mac übernimmt — Lüfter auf 80% wegen Hitze" : "Mac takes over — fans at 80% due to heat"
                        tintOpacity: 0.15
                    }

                    CaptionText {
                        text: "🤖 Automatik hält wach (Blender) · ⏱ noch 3:20 · ⚠️ lange 100%"
                    }
                }
            }

            RowLayout {
                spacing: Theme.spaceSmall

                Repeater {
                    model: [["Elevated", "yellow"], ["Throttling", "orange"], ["Critical", "red"]]

                    ThrottleBadge {
                        required property var modelData

                        label: modelData[0]
                        role: modelData[1]
                    }
                }

                Sparkline {
                    Layout.fillWidth: true
                    Layout.preferredHeight: 32
                    color: Theme.roleColor("orange")
                    values: [52, 54, 53, 58, 61, 60, 66, 70, 69, 72]
                }
            }

            RowLayout {
                PanelButton {
                    text: "Plain"
                }

                PanelButton {
                    kind: "tinted"
                    symbol: "arrow.down.app"
                    text: "Tinted"
                }

                PanelButton {
                    id: focusedButton

                    kind: "filled"
                    objectName: "filled"
                    text: "Filled"
                }

                PanelButton {
                    enabled: false
                    kind: "filled"
                    text: "Disabled"
                }
            }

            Divider {}

            RowLayout {
                Repeater {
                    model: ["stop.circle", "gearshape", "questionmark.circle"]

                    IconButton {
                        required property string modelData

                        symbol: modelData
                        text: modelData
                    }
                }

                IconButton {
                    role: "red"
                    symbol: "power.circle.fill"
                    text: "Quit"
                }

                ChoiceMenu {
                    items: [
                        {
                            label: "Nur wach halten",
                            value: ""
                        },
                        {
                            label: "Kühlen: Leise",
                            value: "silent"
                        },
                        {
                            label: "Kühlen: Max",
                            value: "max"
                        }
                    ]
                    objectName: "menu"
                    symbol: "fan.fill"
                    text: "Leise"
                    value: "silent"
                }
            }
        }
    }
}
