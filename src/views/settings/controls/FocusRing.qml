import QtQuick
import Varnhold

// The ring around the control that the keyboard is in. Around what has a strong colour of its own it is
// of two lines, one of which stands out from that colour.
Rectangle {
    id: root

    property bool shown: false
    property bool aroundColor: false

    anchors.fill: parent
    anchors.margins: -Theme.fine
    visible: shown
    color: "transparent"
    radius: Theme.radius + 2
    border.color: Theme.focusRing
    border.width: Theme.ringWidth

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.fine
        visible: root.aroundColor
        radius: Theme.radius
        color: "transparent"
        border.color: Theme.modelText
        border.width: 2
    }
}
