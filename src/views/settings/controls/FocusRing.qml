import QtQuick
import Varnhold

// The ring around the control that the keyboard is in.
Rectangle {
    property bool shown: false

    anchors.fill: parent
    anchors.margins: -Theme.fine
    visible: shown
    color: "transparent"
    radius: Theme.radius + 2
    border.color: Theme.focusRing
    border.width: 2
}
