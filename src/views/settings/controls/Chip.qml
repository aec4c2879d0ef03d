import QtQuick
import Varnhold

// A small labelled thing that can be taken away.
Item {
    id: root

    property string symbol
    property string text
    property string help

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
        size: 9
        color: Theme.secondaryText
    }

    Label {
        anchors.left: sign.right
        anchors.leftMargin: 4
        anchors.right: remove.left
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        font: Theme.font(10, Font.Normal)
        elide: Text.ElideMiddle
        help: root.help
        Accessible.ignored: true
    }

    IconButton {
        id: remove

        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        symbol: "x-bold"
        size: 8
        help: qsTr("Remove %1").arg(root.text)
        onClicked: root.removed()
    }
}
