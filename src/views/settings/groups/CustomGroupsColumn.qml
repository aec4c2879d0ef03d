import QtQuick
import Varnhold

// The custom groups under each other, or how to come by some.
Item {
    id: root

    required property GroupsPart groups
    required property bool springs

    Column {
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.pad
        visible: root.groups.groups.count === 0
        spacing: Theme.tight

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "No Custom Groups"
            color: Theme.secondaryText
        }

        Label {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            text: "Add groups via File → Custom Groups…"
            font: Theme.small
            color: Theme.secondaryText
        }
    }

    ScrollArea {
        id: scroll

        anchors.fill: parent
        visible: root.groups.groups.count > 0
        contentHeight: sections.height + 2 * Theme.pad

        Column {
            id: sections

            x: Theme.pad
            y: Theme.pad
            width: scroll.room - Theme.pad
            spacing: Theme.pad

            Repeater {
                model: root.groups.groups

                GroupSection {
                    width: sections.width
                    springs: root.springs
                }
            }
        }
    }
}
