import QtQuick
import Varnhold

// One bot in a zone of bots, with the button that takes it out of there.
Rectangle {
    id: root

    required property string label
    required property string icon
    required property string title
    required property string role
    required property bool paused
    required property string owner

    signal released()

    implicitHeight: 22
    radius: Theme.radius
    color: Theme.faded(Theme.secondaryText, 0.08)
    border.width: Theme.edgeWidth
    border.color: Theme.separator
    Accessible.role: Accessible.ListItem
    Accessible.name: root.title
    Accessible.description: root.paused ? "%1, paused".arg(root.role) : root.role

    StatusDot {
        id: dot

        x: 7
        anchors.verticalCenter: parent.verticalCenter
        size: Theme.dot
        color: root.paused ? Theme.orange : Theme.green
        hollow: root.paused && Theme.strong
    }

    EmojiLabel {
        id: sign

        anchors.left: dot.right
        anchors.leftMargin: Theme.gap
        anchors.baseline: name.baseline
        width: implicitWidth
        text: root.icon
        font: Theme.small
        Accessible.ignored: true
    }

    EmojiLabel {
        id: name

        // A long title leaves some room for the role.
        readonly property real room: release.x - x - point.width - Theme.gap

        anchors.left: sign.right
        anchors.leftMargin: Theme.close
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(0, Math.min(implicitWidth, room - Math.min(role.implicitWidth + 4, room * 0.4)))
        text: root.title
        font: Theme.smallMedium
        Accessible.ignored: true
    }

    Label {
        id: point

        anchors.left: name.right
        anchors.baseline: name.baseline
        leftPadding: Theme.tight
        rightPadding: Theme.tight
        text: "·"
        font: Theme.small
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    Label {
        id: role

        anchors.left: point.right
        anchors.baseline: name.baseline
        width: Math.max(0, Math.min(implicitWidth, release.x - x - 4))
        text: root.role
        font: Theme.tiny
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    IconButton {
        id: release

        anchors.right: parent.right
        anchors.rightMargin: Theme.fine
        anchors.verticalCenter: parent.verticalCenter
        symbol: "minus-circle"
        size: Theme.smallSize
        color: Theme.secondaryText
        Accessible.name: "Remove %1 from %2".arg(root.title).arg(root.owner)
        onClicked: root.released()
    }
}
