import QtQuick
import QtQuick.Layouts
import Corvane

// The rule of one application: its name, what is asked for while it runs, and a way to be rid of it.
RowLayout {
    id: row

    required property triggerApp app
    readonly property alias removeButton: remove

    signal cooled(string cooling)
    signal removed

    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.preferredHeight: Theme.symbolSize
        Layout.preferredWidth: Theme.symbolSize
        color: Theme.secondaryText
        name: "app.fill"
    }

    BodyText {
        objectName: "ruleName"
        text: row.app.name
    }

    ChoiceMenu {
        readonly property var item: items.find(item => item.value === row.app.cooling)
        readonly property string choice: item.name ?? item.label

        items: [
            {
                label: Lang.isGerman ? "Nur wach halten" : "Keep awake only",
                value: ""
            },
            {
                label: Lang.isGerman ? "Kühlen: Leise" : "Cool: Silent",
                name: Lang.isGerman ? "Leise" : "Silent",
                value: "silent"
            },
            {
                label: Lang.isGerman ? "Kühlen: Ausgewogen" : "Cool: Balanced",
                name: Lang.isGerman ? "Ausgewogen" : "Balanced",
                value: "balanced"
            },
            {
                label: Lang.isGerman ? "Kühlen: Max" : "Cool: Max",
                name: "Max",
                value: "max"
            }
        ]
        objectName: "ruleAction"
        symbol: row.app.cooling === "" ? "" : "fan.fill"
        text: choice
        value: row.app.cooling

        Accessible.name: row.app.name + ": " + choice

        onChosen: value => row.cooled(value)
    }

    IconButton {
        id: remove

        objectName: "removeRule"
        symbol: "minus.circle.fill"
        text: (Lang.isGerman ? "%1 entfernen" : "Remove %1").arg(row.app.name)

        onClicked: row.removed()
    }
}
