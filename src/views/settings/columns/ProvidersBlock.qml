import QtQuick
import Varnhold

// The providers and how one signs in to each.
Item {
    id: root

    required property ProvidersPart providers
    required property bool showHints

    readonly property int headingHeight: 26

    implicitWidth: 240
    implicitHeight: 420

    Label {
        id: title

        height: root.headingHeight
        verticalAlignment: Text.AlignVCenter
        text: "Providers"
        font: Theme.blockTitle
        Accessible.role: Accessible.Heading
    }

    IconButton {
        id: refresh

        anchors.right: parent.right
        y: (root.headingHeight - height) / 2
        symbol: Theme.symbol("arrow.clockwise.circle.fill")
        size: Theme.signSize
        help: "Refresh"
        onClicked: root.providers.refresh()
    }

    Hint {
        id: hint

        y: root.headingHeight
        width: parent.width
        visible: root.showHints
        text: "Connect your AI accounts — sign in or paste an API key to unlock each provider's models"
    }

    ScrollArea {
        id: scroll

        x: -Theme.fine
        y: (hint.visible ? hint.y + hint.height : root.headingHeight) + Theme.gap
        width: parent.width + Theme.fine + Theme.gutter
        height: Math.min(360, parent.height - y)
        contentHeight: rows.height + 4
        Accessible.role: Accessible.List
        Accessible.name: "Providers"

        // with hints a row may end just at the edge
        AlwaysVisibleScrollbar {}

        Column {
            id: rows

            x: Theme.fine
            y: Theme.fine
            width: scroll.room - Theme.fine
            spacing: Theme.loose

            Repeater {
                model: root.providers.authRows

                ProviderRow {
                    width: rows.width
                    providers: root.providers
                }
            }

            Repeater {
                model: root.providers.keyRows

                KeyRow {
                    width: rows.width
                    providers: root.providers
                }
            }
        }
    }
}
