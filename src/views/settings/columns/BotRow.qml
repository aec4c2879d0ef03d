import QtQuick
import Varnhold

// One bot. A press anywhere selects it; it can be dragged to where bots are taken.
//
// Its agent is watched while the row can be seen.
FocusItem {
    id: root

    required property BotsPart bots
    required property RowList list
    required property int index
    required property string label
    required property string icon
    required property string title
    required property string role
    required property string presence
    required property string presenceHelp
    required property bool isPaused
    required property bool offersConnection
    required property string service
    required property bool keptAlive
    required property string keepaliveSymbol
    required property string keepaliveHelp
    required property bool isSelected
    required property color outline

    signal menuRequested(Item item, real x, real y)

    readonly property string fullName: icon + " " + title
    readonly property bool isCurrent: ListView.isCurrentItem
    property bool pooled: false
    readonly property string watched: pooled || Window.visibility === Window.Hidden ? "" : label
    property string watching

    // One agent is let go of before the next is watched.
    function watch(agent: string) {
        if (watching === agent)
            return;
        if (watching !== "")
            bots.rowDisappeared(watching);
        watching = agent;
        if (agent !== "")
            bots.rowAppeared(agent);
    }

    function flash() {
        light.start();
    }

    function openMenu() {
        menuRequested(more, 0, more.height);
    }

    visible: !pooled
    tabStop: isCurrent
    Accessible.role: Accessible.ListItem
    Accessible.name: fullName
    Accessible.description: presenceHelp + ", " + role + ", " + (offersConnection ? "Not connected" : service)
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.focusable: true
    Accessible.onPressAction: bots.select(index)
    Keys.onReturnPressed: bots.select(index)
    Keys.onEnterPressed: bots.select(index)
    Keys.onSpacePressed: source.pickUp()
    Keys.onMenuPressed: openMenu()
    Keys.onPressed: event => {
        if (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier) {
            openMenu();
            event.accepted = true;
        }
    }
    onActiveFocusChanged: if (activeFocus) list.currentIndex = index
    onWatchedChanged: watch(watched)
    Component.onCompleted: watch(watched)
    Component.onDestruction: watch("")
    ListView.onPooled: pooled = true
    ListView.onReused: pooled = false

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: root.isSelected ? Theme.faded(Theme.accent, 0.12)
            : source.hovered ? Theme.hover : Theme.faded(Theme.text, 0.03)
        border.width: Math.round(thickness * Screen.devicePixelRatio) / Screen.devicePixelRatio // evenly drawn
        border.color: Theme.line(root.outline, root.isPaused ? 0.25 : root.isSelected ? 0.9 : 0.35)

        readonly property real thickness: Theme.strong && root.isSelected ? 3 : 1.5

        Flash {
            id: light

            anchors.fill: parent
        }

        FocusRing { shown: root.visualFocus }
    }

    DragSource {
        id: source

        anchors.fill: parent
        activeFocusOnTab: false
        payload: root.label
        kind: "bot"
        name: root.fullName
        visual: root
        Accessible.ignored: true
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        cursorShape: source.cursorShape
        onPressed: root.forceActiveFocus(Qt.MouseFocusReason)
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                root.menuRequested(root, mouse.x, mouse.y);
            else
                root.bots.select(root.index);
        }
    }

    Item {
        anchors.fill: parent

        StatusDot {
            id: dot

            x: 6
            anchors.verticalCenter: parent.verticalCenter
            color: ({ paused: Theme.orange, online: Theme.green })[root.presence] ?? Theme.red
            hollow: root.presence === "offline"
            help: root.presenceHelp
        }

        BotWords {
            anchors.left: dot.right
            anchors.leftMargin: Theme.gap
            anchors.right: connection.left
            anchors.rightMargin: Theme.gap + 4
            anchors.verticalCenter: parent.verticalCenter
            fullName: root.fullName
            role: root.role
            struck: root.isPaused
        }

        BotConnection {
            id: connection

            anchors.right: keepalive.left
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            service: root.service
            offersConnection: root.offersConnection
            reachable: root.isCurrent
            onConnectionWanted: root.bots.connectBot(root.index)
        }

        IconButton {
            id: keepalive

            anchors.right: more.left
            anchors.rightMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            width: 16
            symbol: Theme.symbol(root.keepaliveSymbol)
            size: Theme.smallSize
            color: root.keptAlive ? Theme.green : Theme.secondaryText
            help: root.keepaliveHelp
            focusPolicy: root.isCurrent ? Qt.TabFocus : Qt.NoFocus
            Accessible.checkable: true
            Accessible.checked: root.keptAlive
            onClicked: root.bots.toggleKeepalive(root.index)
        }

        IconButton {
            id: more

            anchors.right: parent.right
            anchors.rightMargin: Theme.tight
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            symbol: Theme.symbol("ellipsis.circle")
            size: Theme.largeSize
            help: "Actions for %1".arg(root.title)
            focusPolicy: root.isCurrent ? Qt.TabFocus : Qt.NoFocus
            onClicked: root.openMenu()
        }
    }
}
