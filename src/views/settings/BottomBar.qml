import QtQuick
import Varnhold

// The foot of the right pane.
Item {
    id: root

    signal reset()

    implicitHeight: 40

    Divider { width: parent.width }

    TextButton {
        anchors.verticalCenter: parent.verticalCenter
        x: Theme.edge
        text: "Reset"
        destructive: true
        help: "Empties all chains but Audio"
        onClicked: root.reset()
    }
}
