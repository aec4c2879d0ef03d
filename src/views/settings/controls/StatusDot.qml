import QtQuick
import Varnhold

// A dot whose colour says how something is; its tool tip says it in words.
Item {
    id: root

    property color color: Theme.gray
    property real size: 8
    property string help

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Indicator
    Accessible.name: root.help
    Accessible.ignored: root.help === ""

    Rectangle {
        anchors.centerIn: parent
        width: root.size
        height: root.size
        radius: root.size / 2
        color: root.color
    }

    ToolTipArea { text: root.help }
}
