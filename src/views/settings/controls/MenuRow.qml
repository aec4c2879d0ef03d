import QtQuick
import QtQuick.Templates as T
import Varnhold

// One line of a menu: something to choose, a heading, or the line between two groups.
T.MenuItem {
    id: root

    property string kind: "action"
    property string symbol
    property color swatch: "transparent" // of what the title names
    property bool destructive: false
    property bool signColumn: true // room for a sign or a mark before the title

    readonly property color ink: highlighted && kind === "action" ? Theme.accentText
        : kind === "section" ? Theme.secondaryText : destructive ? Theme.red : Theme.text

    readonly property real signWidth: signColumn && kind === "action" ? 22 : 0
    readonly property real indent: signWidth + (sample.visible ? sample.width + Theme.gap : 0)

    implicitWidth: indent + Math.ceil(title.implicitWidth) + leftPadding + rightPadding
    implicitHeight: kind === "divider" ? 9 : kind === "section" ? 20 : 24
    leftPadding: Theme.pad
    rightPadding: Theme.wide
    enabled: kind === "action"
    Accessible.name: root.text
    Accessible.ignored: kind === "divider"
    Accessible.checkable: root.checked
    Accessible.checked: root.checked

    contentItem: Item {
        visible: root.kind !== "divider"

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: root.symbol !== "" ? root.symbol : root.checked ? "check-bold" : ""
            size: root.symbol !== "" ? 12 : 10
            color: root.ink
        }

        Swatch {
            id: sample

            x: root.signWidth
            anchors.verticalCenter: parent.verticalCenter
            visible: root.swatch.a > 0
            color: root.swatch
        }

        Label {
            id: title

            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: root.indent
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            font: root.kind === "section" ? Theme.smallStrong : Theme.label
            color: root.ink
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.chipRadius
        color: root.highlighted && root.kind === "action" ? Theme.accent : "transparent"

        Divider {
            anchors.verticalCenter: parent.verticalCenter
            x: 8
            width: parent.width - 16
            visible: root.kind === "divider"
        }
    }
}
