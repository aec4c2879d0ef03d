import QtQuick
import Varnhold

// Lights up once, to show where something new stands.
Rectangle {
    id: root

    readonly property alias running: light.running

    function start() {
        light.restart();
    }

    radius: Theme.radius
    color: Theme.accent
    opacity: 0

    SequentialAnimation {
        id: light

        NumberAnimation { target: root; property: "opacity"; to: 0.35; duration: Theme.quick }
        NumberAnimation { target: root; property: "opacity"; to: 0; duration: 4 * Theme.calm }
    }
}
