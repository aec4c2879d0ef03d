import QtQuick
import Varnhold

// A small labelled thing that can be taken away.
Item {
    id: root

    property string symbol
    property string text
    property string help
    property bool reachable: true // by Tab

    readonly property alias button: remove

    signal removed()

    implicitWidth: 180
    implicitHeight: 22
    Accessible.role: Accessible.ListItem
    Accessible.name: root.text
    Accessible.description: root.help

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.hover
        border.color: Theme.separator
        border.width: 1
    }

    // Many scripts have taller lines than the text font, which alone decides where the line stands.
    FontMetrics {
        id: metrics

        font: Theme.tiny
    }

    Symbol {
        id: sign

        x: 7
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        size: Theme.zoneSize
        color: Theme.secondaryText
    }

    EmojiLabel {
        id: whole

        readonly property real room: remove.x - x

        anchors.left: sign.right
        anchors.leftMargin: Theme.tight
        anchors.verticalCenter: parent.verticalCenter
        width: implicitWidth
        visible: implicitWidth <= room
        text: root.text
        font: Theme.tiny
        help: root.help
        Accessible.ignored: true
    }

    // What is too long is cut in its middle: names of files differ at their ends.
    Label {
        visible: !whole.visible
        anchors.left: sign.right
        anchors.leftMargin: Theme.tight
        anchors.right: remove.left
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: Math.round((metrics.ascent - metrics.descent) / 2)
        text: root.text
        font: Theme.tiny
        elide: Text.ElideMiddle
        help: root.help
        Accessible.ignored: true
    }

    IconButton {
        id: remove

        anchors.right: parent.right
        anchors.rightMargin: Theme.fine
        anchors.verticalCenter: parent.verticalCenter
        symbol: "x-bold"
        size: Theme.zoneSize - 1
        help: "Remove %1".arg(root.text)
        focusPolicy: root.reachable ? Qt.TabFocus : Qt.NoFocus
        onClicked: root.removed()
    }
}
