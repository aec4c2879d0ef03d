import QtQuick
import Varnhold

// One of the six chains: header, bots and models. Given more height than it needs, its models get it.
Rectangle {
    id: root

    required property ChainPart chain
    required property bool showHints
    required property bool springs

    // At least, so that the zones of sections side by side line up.
    property real headerHeight: 0
    property real botsHeight: 0

    readonly property real ownHeaderHeight: header.implicitHeight
    readonly property real ownBotsHeight: bots.implicitHeight

    implicitHeight: models.y + models.implicitHeight + Theme.pad
    radius: Theme.cardRadius
    color: Theme.chainGround(chain.tint)
    border.width: 2 * Theme.edgeWidth
    border.color: Theme.groundEdge(chain.tint)
    Accessible.role: Accessible.Grouping
    Accessible.name: root.chain.title
    Accessible.description: root.chain.help

    // Under everything else, so that what stands on it can have tool tips of its own.
    Item {
        anchors.fill: parent

        ToolTipArea { text: root.chain.help }
    }

    ChainHeader {
        id: header

        x: Theme.pad
        y: Theme.pad
        width: parent.width - 2 * Theme.pad
        chain: root.chain
        showHints: root.showHints
    }

    BotsZone {
        id: bots

        x: Theme.pad
        y: header.y + Math.max(header.implicitHeight, root.headerHeight) + 2 * Theme.pad
        width: header.width
        height: Math.max(implicitHeight, root.botsHeight)
        stack: root.chain
        owner: root.chain.title
        targeted: root.chain.botsTargeted
        onHoveredChanged: root.chain.botsTargeted = hovered
    }

    ModelsArea {
        id: models

        x: Theme.pad
        y: bots.y + Math.max(bots.implicitHeight, root.botsHeight) + Theme.pad
        width: header.width
        height: Math.max(implicitHeight, root.height - y - Theme.pad)
        stack: root.chain
        owner: root.chain.title
        springs: root.springs
        topTargeted: root.chain.topTargeted
        builtIns: root.chain.builtIns
        deletable: true
        fading: root.chain.fading
        onTopHoveredChanged: root.chain.topTargeted = topHovered
        onDeleteRequested: uid => root.chain.deleteModel(uid)
    }
}
