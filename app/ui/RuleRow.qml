import QtQuick
import QtQuick.Layouts
import Corvane

// The rule of one application: its name, what is asked for while it runs, and a way to be rid of it.
RowLayout {
    id: row

    required property triggerApp app
    required property MenuState menu

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
        readonly property string choice: row.app.cooling === "" ? items[0].label : row.menu.profileName(row.app.cooling)

        items: [
            {
                label: Lang.isGerman ? "Nur wach halten" : "Keep awake only",
                value: ""
            },
            {
                label: Lang.isGerman ? "Kühlen: Leise" : "Cool: Silent",
                value: "silent"
            },
            {
                label: Lang.isGerman ? "Kühlen: Ausgewogen" : "Cool: Balanced",
                value: "balanced"
            },
            {
                label: Lang.isGerman ? "Kühlen: Max" : "Cool: Max",
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
        objectName: "removeRule"
        symbol: "minus.circle.fill"
        text: (Lang.isGerman ? "%1 entfernen" : "Remove %1").arg(row.app.name)

        onClicked: row.removed()
    }
}
