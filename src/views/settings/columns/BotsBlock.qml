import QtQuick
import Varnhold

// The bots: a heading with the switch for all, the form for a new one, and a row for each. The list
// scrolls by itself where the block may not grow any more.
Item {
    id: root

    required property BotsPart bots
    required property bool showHints

    property real maximumHeight: Infinity

    readonly property real listTop: formTop + form.height + Theme.pad
    readonly property real wantedListHeight: rows.count * (rowHeight + rows.spacing) - rows.spacing
    readonly property int rowHeight: 32
    readonly property int headingHeight: 26
    readonly property real formTop: (hint.visible ? hint.y + hint.height : headingHeight) + Theme.gap

    implicitWidth: 260
    implicitHeight: Math.min(maximumHeight, listTop + Math.max(0, wantedListHeight) + 2)

    Label {
        id: heading

        height: root.headingHeight
        verticalAlignment: Text.AlignVCenter
        text: "Bots"
        font: Theme.blockTitle
        Accessible.role: Accessible.Heading
    }

    IconButton {
        id: all

        anchors.right: parent.right
        y: (root.headingHeight - height) / 2
        symbol: Theme.symbol(root.bots.keepaliveSymbol)
        size: Theme.bodySize
        color: root.bots.allKeptAlive ? Theme.green : Theme.secondaryText
        help: root.bots.keepaliveHelp
        Accessible.checkable: true
        Accessible.checked: root.bots.allKeptAlive
        onClicked: root.bots.toggleKeepaliveForAll()
    }

    Hint {
        id: hint

        y: root.headingHeight
        width: parent.width
        visible: root.showHints
        text: "Your Telegram AI agents — each bot is a separate assistant"
    }

    BotForm {
        id: form

        y: root.formTop
        width: parent.width
        bots: root.bots
        onBotAdded: row => {
            rows.positionViewAtIndex(row, ListView.Contain);
            rows.itemAtIndex(row)?.flash();
        }
    }

    RowList {
        id: rows

        x: -Theme.fine
        y: root.listTop - Theme.fine
        width: parent.width + Theme.fine + Theme.gutter
        height: parent.height - y
        topMargin: Theme.fine
        bottomMargin: Theme.fine
        name: "Bots"
        model: root.bots.rows
        delegate: BotRow {
            x: Theme.fine
            width: rows.room - Theme.fine
            height: root.rowHeight
            bots: root.bots
            list: rows
            onMenuRequested: (item, x, y) => {
                menu.rows = root.bots.openMenu(index).map(
                    row => Object.assign({}, row, { symbol: Theme.symbol(row.symbol) }));
                menu.openAt(item, x, y);
            }
        }
    }

    ContextMenu {
        id: menu

        onTriggered: row => root.bots.trigger(row)
    }
}
