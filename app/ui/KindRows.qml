pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Layouts
import Corvane

// The kinds of sleep that the session can prevent, each with its state.
ColumnLayout {
    id: rows

    required property SleepManager manager

    spacing: 0

    Repeater {
        model: [
            {
                kind: "system",
                symbol: "desktopcomputer",
                title: Lang.isGerman ? "System wach halten" : "Keep system awake"
            },
            {
                kind: "display",
                symbol: "display",
                title: Lang.isGerman ? "Display wach halten" : "Keep display awake"
            },
            {
                kind: "network",
                symbol: "network",
                title: Lang.isGerman ? "Netzwerk aktiv halten" : "Keep network active"
            }
        ]

        ModeRow {
            required property var modelData

            isOn: rows.manager.activeKinds.includes(modelData.kind)
            objectName: "kind-" + modelData.kind
            symbol: modelData.symbol
            title: modelData.title

            onClicked: rows.manager.toggle(modelData.kind)
        }
    }
}
