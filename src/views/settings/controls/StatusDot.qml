import QtQuick
import Varnhold

// A dot whose colour says how something is, and whose form says so to those who see no colours; its
// tool tip says it in words.
Item {
    id: root

    property color color: Theme.gray
    property real size: 8
    property bool hollow: false // of what isn't there
    property string help

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Indicator
    Accessible.name: root.help
    Accessible.ignored: root.help === ""

    // Painted: a rectangle of half its size as radius is no circle where no graphics card draws it.
    // What would be the outline keeps its edge off the edge of the painting.
    DashedFrame {
        anchors.centerIn: parent
        width: root.size + 2
        height: width
        radius: width / 2
        lineWidth: 2
        dash: 0
        stroke: root.hollow ? root.color : "transparent"
        fill: root.hollow ? "transparent" : root.color
    }

    ToolTipArea { text: root.help }
}
