import QtQuick
import Varnhold

// A tool of this machine's that always stands in its chain: nothing can be done with the row.
Rectangle {
    id: root

    required property string name

    implicitHeight: Math.max(26, title.implicitHeight + 10)
    radius: Theme.radius
    color: Theme.faded(Theme.teal, 0.08)
    border.width: Theme.edgeWidth
    border.color: Theme.separator
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: "built-in"

    StatusDot {
        id: dot

        x: Theme.pad
        anchors.verticalCenter: parent.verticalCenter
        size: Theme.dot
        color: Theme.line(Theme.teal, 0.7)
    }

    Label {
        id: title

        anchors.left: dot.right
        anchors.leftMargin: Theme.gap
        anchors.right: note.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        font: Theme.label
        wrapMode: Text.Wrap
        maximumLineCount: 2
        Accessible.ignored: true
    }

    Label {
        id: note

        anchors.right: parent.right
        anchors.rightMargin: Theme.pad
        anchors.verticalCenter: parent.verticalCenter
        text: "built-in"
        font: Theme.tiny
        color: Theme.secondaryText
        Accessible.ignored: true
    }
}
