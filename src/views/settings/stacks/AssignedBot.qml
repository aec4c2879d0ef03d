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
    Accessible.role: Accessible.ListItem
    Accessible.name: root.title
    Accessible.description: root.paused ? qsTr("%1, paused").arg(root.role) : root.role

    StatusDot {
        id: dot

        x: 7
        anchors.verticalCenter: parent.verticalCenter
        size: 7
        color: root.paused ? Theme.orange : Theme.green
    }

    EmojiLabel {
        id: sign

        anchors.left: dot.right
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        anchors.verticalCenterOffset: 1 // emoji sit high in their line
        width: implicitWidth
        text: root.icon
        font: Theme.font(11, Font.Normal)
        Accessible.ignored: true
    }

    EmojiLabel {
        id: name

        // A long title leaves some room for the role.
        readonly property real room: release.x - x - point.width - Theme.gap

        anchors.left: sign.right
        anchors.leftMargin: 5
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(0, Math.min(implicitWidth, room - Math.min(role.implicitWidth + 4, room * 0.4)))
        text: root.title
        font: Theme.font(11, Font.Medium)
        Accessible.ignored: true
    }

    Label {
        id: point

        anchors.left: name.right
        anchors.verticalCenter: parent.verticalCenter
        leftPadding: 4
        rightPadding: 4
        text: "·"
        font: Theme.font(11, Font.Normal)
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    Label {
        id: role

        anchors.left: point.right
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(0, Math.min(implicitWidth, release.x - x - 4))
        text: root.role
        font: Theme.font(10, Font.Normal)
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    IconButton {
        id: release

        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        symbol: "minus-circle"
        size: 11
        color: Theme.secondaryText
        Accessible.name: qsTr("Remove %1 from %2").arg(root.title).arg(root.owner)
        onClicked: root.released()
    }
}
