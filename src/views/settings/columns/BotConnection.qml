import QtQuick
import Varnhold

// The service that a bot speaks to or, while it has no token, the way to give it one.
Item {
    id: root

    required property string service
    required property bool offersConnection
    required property bool reachable // by Tab

    signal connectionWanted()

    implicitWidth: offersConnection ? connect.implicitWidth : badge.implicitWidth
    implicitHeight: 20

    TextButton {
        id: connect

        visible: root.offersConnection
        text: "Connect"
        size: Theme.smallSize
        prominent: true
        ground: Theme.orange
        focusPolicy: root.reachable ? Qt.TabFocus : Qt.NoFocus
        onClicked: root.connectionWanted()
    }

    Badge {
        id: badge

        anchors.verticalCenter: parent.verticalCenter
        visible: !root.offersConnection
        text: root.service
        color: root.service === "Slack" ? Theme.slackPurple : Theme.blue
    }
}
