import QtQuick
import QtQuick.Layouts
import Corvane

// A chosen drive, whether it is there, and a way to be rid of it.
RowLayout {
    id: view

    required property driveRow row
    readonly property alias removeButton: remove

    signal removed

    Layout.fillWidth: true
    spacing: 6

    Symbol {
        Layout.preferredHeight: Theme.symbolSize
        Layout.preferredWidth: Theme.symbolSize
        color: view.row.exists ? Theme.secondaryText : Theme.roleTextColor("orange")
        name: view.row.exists ? "externaldrive.fill" : "externaldrive.badge.xmark"
        objectName: "driveSymbol"
    }

    BodyText {
        color: view.row.exists ? Theme.text : Theme.secondaryText
        objectName: "driveName"
        text: view.row.drive.name

        Accessible.description: view.row.exists ? "" : (Lang.isGerman ? "Nicht verbunden" : "Not connected")
    }

    IconButton {
        id: remove

        objectName: "removeDrive"
        symbol: "minus.circle.fill"
        text: (Lang.isGerman ? "%1 entfernen" : "Remove %1").arg(view.row.drive.name)

        onClicked: view.removed()
    }
}
