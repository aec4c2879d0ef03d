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

    Symbol {
        id: sign

        x: 7
        anchors.verticalCenter: parent.verticalCenter
        name: root.symbol
        size: Theme.zoneSize
        color: Theme.secondaryText
    }

    Label {
        anchors.left: sign.right
        anchors.leftMargin: Theme.tight
        anchors.right: remove.left
        anchors.verticalCenter: parent.verticalCenter
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
