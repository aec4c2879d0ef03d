import QtQuick
import Varnhold

// The governor's chain on a card of its own, and beside it the custom groups, as high as the card.
Item {
    id: root

    required property SettingsModel settings
    required property real spacing

    readonly property ChainPart chain: settings.governorChain

    implicitHeight: card.height

    Rectangle {
        id: card

        width: (parent.width - root.spacing) / 2
        height: section.implicitHeight + 2 * Theme.pad
        radius: Theme.cardRadius
        color: Theme.pastelGround(root.chain.tint, 0.55)

        ChainSection {
            id: section

            anchors.fill: parent
            anchors.margins: Theme.pad
            chain: root.chain
            showHints: root.settings.showHints
            springs: root.settings.springs
        }
    }

    CustomGroupsColumn {
        anchors.left: card.right
        anchors.leftMargin: root.spacing
        anchors.right: parent.right
        height: parent.height
        groups: root.settings.groups
        springs: root.settings.springs
    }
}
