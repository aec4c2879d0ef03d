import QtQuick
import Varnhold

// Shows where a drag by keys would drop.
Rectangle {
    required property rect area

    x: area.x
    y: area.y
    z: 2
    width: area.width
    height: area.height
    radius: Theme.radius
    color: "transparent"
    border { width: 2; color: Theme.focusRing }
}
