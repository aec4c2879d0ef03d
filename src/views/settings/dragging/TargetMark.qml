import QtQuick
import Varnhold

// Shows where a drag by keys would drop.
Rectangle {
    id: root

    required property rect area
    property int margin: 0 // around the area, where a ring would be lost on its colour

    x: root.area.x - root.margin
    y: root.area.y - root.margin
    z: 2
    width: root.area.width + 2 * root.margin
    height: root.area.height + 2 * root.margin
    radius: Theme.radius + root.margin
    color: "transparent"
    border { width: 3; color: Theme.focusRing }
}
