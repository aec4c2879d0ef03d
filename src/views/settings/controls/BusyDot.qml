import QtQuick
import Varnhold

// Turns while something goes on whose end can't be told.
Item {
    id: root

    property real size: Theme.signSize
    property color color: Theme.secondaryText

    implicitWidth: size
    implicitHeight: size
    Accessible.role: Accessible.Indicator
    Accessible.name: "Busy"

    Item {
        anchors.fill: parent

        RotationAnimation on rotation {
            from: 0
            to: 360
            duration: 1000
            loops: Animation.Infinite
            running: root.visible
        }

        Repeater {
            model: 8

            Rectangle {
                id: dash

                required property int index

                x: (root.size - width) / 2
                width: Math.max(1.5, root.size / 8)
                height: root.size / 3.4
                radius: width / 2
                color: root.color
                opacity: 0.25 + 0.75 * dash.index / 7
                antialiasing: true
                transform: Rotation {
                    origin.x: Math.max(1.5, root.size / 8) / 2
                    origin.y: root.size / 2
                    angle: dash.index * 45
                }
            }
        }
    }
}
