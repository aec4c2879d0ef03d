import QtQuick
import Varnhold

// The bots of a stack, and where more are dropped. Higher than it needs to be, its frame grows.
Item {
    id: root

    required property StackPart stack
    required property string owner // whose bots they are, as it is spoken

    property bool targeted: hovered // a drag hovers over it

    readonly property alias hovered: zone.hovered
    readonly property real rowHeight: 22

    // A chain may have all bots of a large fleet, and each row is dear to make.
    readonly property NearSight near: NearSight {
        item: rows
        pitch: root.rowHeight + rows.spacing
        count: root.stack.bots.count
    }

    implicitHeight: frame.y + Math.max(36, rows.height + 10)

    ZoneLabel {
        id: heading

        text: "BOTS"
    }

    DashedFrame {
        id: frame

        y: heading.height + Theme.slim
        width: parent.width
        height: Math.max(root.height, root.implicitHeight) - y
        radius: Theme.zoneRadius
        lineWidth: 1
        dash: 4
        fill: root.targeted ? Theme.faded(Theme.blue, 0.12) : Theme.faded(Theme.secondaryText, 0.06)
        stroke: root.targeted ? Theme.blue : Theme.line(Theme.secondaryText, 0.3)

        DropZone {
            id: zone

            anchors.fill: parent
            kinds: ["bot"]
            comers: ["bot", "model"]
            name: "Bots of %1".arg(root.owner)
            Accessible.role: Accessible.Grouping
            Accessible.name: name
            useful: root.stack.takesBot(DragSession.payload)
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
            y: Math.max(5, (36 - height) / 2)
            width: parent.width - 10
            spacing: Theme.slim

            Repeater {
                model: root.stack.bots

                Loader {
                    id: row

                    required property int index
                    required property string label
                    required property string icon
                    required property string title
                    required property string role
                    required property bool paused

                    width: rows.width
                    height: root.rowHeight
                    active: root.near.holds(index) || activeFocus
                    sourceComponent: AssignedBot {
                        label: row.label
                        icon: row.icon
                        title: row.title
                        role: row.role
                        paused: row.paused
                        owner: root.owner
                        onReleased: root.stack.unassignBot(row.label)
                    }
                }
            }
        }
    }
}
