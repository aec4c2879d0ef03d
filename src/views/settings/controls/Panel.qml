import QtQuick
import Varnhold

// The raised ground of what stands over the page: menus, tool tips and sheets, with a soft shadow.
Item {
    id: root

    property real radius: Theme.cardRadius
    property color color: Theme.raised
    property int depth: 4 // how far the shadow reaches

    Repeater {
        model: root.depth

        Rectangle {
            required property int index

            anchors.fill: parent
            anchors.margins: -Theme.hair - index
            anchors.topMargin: Theme.hair - index
            anchors.bottomMargin: -Theme.slim - index
            radius: root.radius + 1 + index
            color: Theme.faded(Theme.shadow, 1 / root.depth)
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: root.color
        border.color: Theme.line(Theme.text, 0.16)
        border.width: 1
    }
}
