import QtQuick
import Varnhold

// A rounded ground with what stands on it.
Rectangle {
    id: root

    property color ground: Theme.card
    property color tint: ground // the same by another name, for what has a colour of its own
    property real padding: Theme.pad
    property bool outlined: false

    default property alias content: holder.data

    implicitWidth: holder.childrenRect.width + 2 * padding
    implicitHeight: holder.childrenRect.height + 2 * padding
    radius: Theme.cardRadius
    color: tint
    border.width: outlined ? 1 : 0
    border.color: Theme.separator

    Item {
        id: holder

        anchors.fill: parent
        anchors.margins: root.padding
    }
}
