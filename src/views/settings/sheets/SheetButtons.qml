import QtQuick
import Varnhold

// The foot of a sheet: a button that gives up at the left, the one that goes on at the right.
Item {
    id: root

    property string acceptText
    property bool acceptable: true

    signal accepted()
    signal cancelled()

    implicitHeight: 28

    TextButton {
        height: parent.height
        text: "Cancel"
        onClicked: root.cancelled()
    }

    TextButton {
        anchors.right: parent.right
        height: parent.height
        prominent: true
        enabled: root.acceptable
        text: root.acceptText
        onClicked: root.accepted()
    }
}
