import QtQuick
import QtQuick.Templates as T
import Varnhold

// One line of a menu: something to choose, a heading, or the line between two groups.
T.MenuItem {
    id: root

    property string kind: "action"
    property string symbol
    property bool destructive: false
    property bool checkColumn: false // room for the mark before all titles

    readonly property color ink: highlighted && kind === "action" ? Theme.accentText
        : kind === "section" ? Theme.secondaryText : destructive ? Theme.red : Theme.text

    implicitWidth: (checkColumn ? 20 : 0) + (symbol === "" ? 0 : 22) + Math.ceil(title.implicitWidth) + 20
    implicitHeight: kind === "divider" ? 9 : kind === "section" ? 20 : 24
    leftPadding: 8
    rightPadding: 12
    enabled: kind === "action"
    Accessible.name: root.text
    Accessible.ignored: kind === "divider"
    Accessible.checkable: root.checkColumn
    Accessible.checked: root.checked

    contentItem: Item {
        visible: root.kind !== "divider"

        Symbol {
            id: mark

            anchors.verticalCenter: parent.verticalCenter
            visible: root.checkColumn && root.checked
            name: "check-bold"
            size: 10
            color: root.ink
        }

        Symbol {
            id: sign

            x: root.checkColumn ? 18 : 0
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol
            size: 12
            color: root.ink
        }

        Label {
            id: title

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: (root.checkColumn ? 18 : 0) + (root.symbol === "" ? 0 : 21)
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: root.kind === "section" ? Theme.font(11, Font.DemiBold) : Theme.font(12, Font.Normal)
            color: root.ink
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: 5
        color: root.highlighted && root.kind === "action" ? Theme.accent : "transparent"

        Divider {
            anchors.verticalCenter: parent.verticalCenter
            x: 8
            width: parent.width - 16
            visible: root.kind === "divider"
        }
    }
}
