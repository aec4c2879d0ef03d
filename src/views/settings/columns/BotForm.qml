import QtQuick
import Varnhold

// The line in which a new bot is described and added. The service is asked for, and every bot begins
// on Telegram all the same.
Item {
    id: root

    required property BotsPart bots

    signal botAdded(int row)

    function add() {
        const row = bots.addBot();
        if (row >= 0)
            botAdded(row);
    }

    readonly property real fieldWidth: (width - service.width - adder.width - 3 * Theme.gap) / 2

    implicitWidth: 240
    implicitHeight: Theme.fieldHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: "New bot"

    Picker {
        id: service

        width: 80
        leftPadding: Theme.loose
        rightPadding: Theme.ample
        font: Theme.small
        values: root.bots.services
        current: root.bots.newService
        name: "Service"
        onChosen: value => root.bots.newService = value
    }

    Field {
        id: role

        anchors.left: service.right
        anchors.leftMargin: Theme.gap
        width: root.fieldWidth
        placeholder: "Role"
        text: root.bots.newRole
        onEdited: text => root.bots.newRole = text
        onAccepted: token.forceActiveFocus(Qt.TabFocusReason)
    }

    Field {
        id: token

        anchors.left: role.right
        anchors.leftMargin: Theme.gap
        width: root.fieldWidth
        placeholder: "Token"
        text: root.bots.newToken
        onEdited: text => root.bots.newToken = text
        onAccepted: root.add()
    }

    IconButton {
        id: adder

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        symbol: Theme.symbol("plus.circle.fill")
        size: Theme.signSize + 1
        color: Theme.blue
        help: "Add bot"
        onClicked: root.add()
    }
}
