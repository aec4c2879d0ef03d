import QtQuick
import Varnhold

// The bots of a stack, and where more are dropped.
Column {
    id: root

    required property StackPart stack
    required property string owner // whose bots they are, as it is spoken

    property bool targeted: hovered // a drag hovers over it

    readonly property alias hovered: zone.hovered

    spacing: Theme.slim

    ZoneLabel { text: "BOTS" }

    DashedFrame {
        width: parent.width
        height: Math.max(36, rows.height + 10)
        radius: Theme.zoneRadius
        lineWidth: 1
        dash: 4
        fill: root.targeted ? Theme.faded(Theme.blue, 0.12) : Theme.faded(Theme.secondaryText, 0.06)
        stroke: root.targeted ? Theme.blue : Theme.faded(Theme.secondaryText, 0.3)

        DropZone {
            id: zone

            anchors.fill: parent
            kinds: ["bot"]
            comers: ["bot", "model"]
            name: "Bots of %1".arg(root.owner)
            Accessible.role: Accessible.Grouping
            Accessible.name: name
            onTextDropped: text => root.stack.dropOnBots(text)
        }

        Label {
            anchors.centerIn: parent
            visible: root.stack.bots.count === 0
            text: "Drag bots here"
            font: Theme.small
            color: Theme.secondaryText
        }

        Column {
            id: rows

            x: 5
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 10
            spacing: Theme.slim

            Repeater {
                model: root.stack.bots

                AssignedBot {
                    id: row

                    width: rows.width
                    owner: root.owner
                    onReleased: root.stack.unassignBot(row.label)
                }
            }
        }
    }
}
