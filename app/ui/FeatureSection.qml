import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Corvane

// A feature with its switch, and what can be said and chosen about it while `expanded`. It shows what is so: clicks
// ask with `setOn` and `setExpanded`. The body is made when it is first shown.
Rectangle {
    id: section

    required property string emoji
    required property string title
    required property bool isOn
    required property bool expanded
    property bool switchDisabled: false
    required property Component content

    signal setOn(bool on)
    signal setExpanded(bool expanded)

    Layout.fillWidth: true
    border.color: Theme.outline
    border.width: 1
    color: Theme.card
    implicitHeight: column.implicitHeight
    implicitWidth: 348
    radius: Theme.radiusLarge

    Column {
        id: column

        bottomPadding: section.expanded ? Theme.space : 0
        width: parent.width

        T.AbstractButton {
            id: header

            height: 44
            hoverEnabled: true
            objectName: "header"
            text: section.title
            width: parent.width

            Accessible.description: section.expanded ? (Lang.isGerman ? "Aufgeklappt" : "Expanded") : (Lang.isGerman ? "Zugeklappt" : "Collapsed")
            Accessible.name: text
            Accessible.onPressAction: clicked()

            onClicked: section.setExpanded(!section.expanded)

            background: Rectangle {
                color: header.down ? Theme.pressTint : header.hovered ? Theme.hoverTint : "transparent"
                radius: section.radius

                Behavior on color {
                    ColorAnimation {
                        duration: Theme.quick
                    }
                }

                FocusRing {
                    anchors.margins: 1
                    control: header
                    radius: section.radius - 1
                    shown: header.visualFocus
                }
            }

            contentItem: Item {
                Emoji {
                    id: picture

                    anchors.verticalCenter: parent.verticalCenter
                    font.pixelSize: 17
                    text: section.emoji
                    width: 24
                    x: Theme.space
                }

                Text {
                    id: name

                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.text
                    font.pixelSize: Theme.bodySize + 1
                    font.weight: Font.DemiBold
                    text: section.title
                    textFormat: Text.PlainText
                    x: picture.x + picture.width + Theme.spaceSmall
                }

                Symbol {
                    anchors.verticalCenter: parent.verticalCenter
                    color: Theme.secondaryText
                    height: 14
                    name: "chevron.right"
                    rotation: section.expanded ? 90 : 0
                    width: 14
                    x: name.x + name.implicitWidth + 6

                    Behavior on rotation {
                        NumberAnimation {
                            duration: Theme.calm
                            easing.type: Easing.OutCubic
                        }
                    }
                }
            }

            // Keeps clicks on a disabled switch from the header.
            MouseArea {
                anchors.fill: control
            }

            PanelSwitch {
                id: control

                accessibleName: section.title
                anchors.right: parent.right
                anchors.rightMargin: Theme.space
                anchors.verticalCenter: parent.verticalCenter
                enabled: !section.switchDisabled
                isOn: section.isOn
                objectName: "switch"

                onSetOn: on => section.setOn(on)
            }
        }

        LazyBody {
            content: section.content
            shown: section.expanded
            width: parent.width - 2 * Theme.space
            x: Theme.space
        }
    }
}
