import QtQuick
import Varnhold

// One custom group: its steppers, bots and models, what is attached to it and what it is for.
Rectangle {
    id: root

    required property GroupPart group
    required property bool springs

    implicitHeight: content.height + 2 * Theme.pad
    radius: Theme.cardRadius
    color: Theme.pastelGround(group.ground, 0.55)
    border.width: 2 * Theme.edgeWidth
    border.color: Theme.groundEdge(group.ground)
    Accessible.role: Accessible.Grouping
    Accessible.name: root.group.name

    Column {
        id: content

        x: Theme.pad
        y: Theme.pad
        width: parent.width - 2 * Theme.pad
        spacing: Theme.gap

        EmojiLabel {
            width: parent.width
            text: root.group.name
            font: Theme.headline
            Accessible.role: Accessible.Heading
        }

        StackSteppers { stack: root.group }

        BotsZone {
            width: parent.width
            stack: root.group
            owner: root.group.name
        }

        ModelsArea {
            width: parent.width
            stack: root.group
            owner: root.group.name
            springs: root.springs
            minimumHeight: 72
            removable: true
        }

        Flow {
            width: parent.width
            spacing: Theme.gap

            AttachButton { group: root.group }

            TextButton {
                text: root.group.expanded ? "Hide Objectives" : "Objectives"
                symbol: root.group.expanded ? "caret-up-bold" : "text-align-left"
                size: Theme.smallSize
                onClicked: {
                    root.group.toggleObjectives();
                    objectives.item?.begin();
                }
            }
        }

        PathChips {
            width: parent.width
            visible: root.group.attachments.count > 0
            paths: root.group.attachments
            spacing: root.group.chipSpacing
            name: "Attachments"
            onRemoved: path => root.group.removeAttachment(path)
        }

        Row {
            visible: root.group.doctrine.count > 0
            spacing: Theme.tight

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: Theme.symbol("book.closed.fill")
                size: Theme.tinySize
                color: Theme.secondaryText
            }

            Label {
                text: "Doctrine"
                font: Theme.smallMedium
                color: Theme.secondaryText
                Accessible.role: Accessible.Heading
            }
        }

        PathChips {
            width: parent.width
            visible: root.group.doctrine.count > 0
            paths: root.group.doctrine
            spacing: root.group.chipSpacing
            name: "Doctrine"
            onRemoved: path => root.group.removeDoctrine(path)
        }

        Loader {
            id: objectives

            width: parent.width
            active: root.group.expanded
            visible: active
            sourceComponent: ObjectivesEditor { group: root.group }
        }
    }
}
