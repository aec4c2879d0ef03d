import QtQuick
import Varnhold

// Whether a provider can be used, its name, and what else is to be said of it.
Row {
    id: root

    property string name
    property string tag
    property bool isAuthorized: false

    spacing: Theme.gap

    StatusDot {
        anchors.verticalCenter: parent.verticalCenter
        color: root.isAuthorized ? Theme.green : Theme.red
        hollow: Theme.strong && !root.isAuthorized
        help: root.isAuthorized ? "Signed in" : "Not signed in"
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        font: Theme.labelBold
    }

    Label {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.tag !== ""
        text: root.tag
        font: Theme.label
        color: Theme.secondaryText
    }
}
