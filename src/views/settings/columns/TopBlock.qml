import QtQuick
import Varnhold

// The top of the right pane: the providers, and the prompts in all the room beside them.
Rectangle {
    id: root

    required property SettingsModel settings

    implicitWidth: 900
    implicitHeight: 420
    color: Theme.shade

    ProvidersBlock {
        id: providers

        x: Theme.edge
        y: Theme.pad
        width: 240
        height: parent.height - 2 * Theme.pad
        providers: root.settings.providers
        showHints: root.settings.showHints
    }

    Divider {
        id: line

        anchors.left: providers.right
        anchors.leftMargin: Theme.edge
        vertical: true
        y: Theme.pad
        height: parent.height - 2 * Theme.pad
    }

    PromptsBlock {
        anchors.left: line.right
        anchors.leftMargin: Theme.edge
        anchors.right: parent.right
        anchors.rightMargin: Theme.edge
        y: Theme.pad
        height: parent.height - 2 * Theme.pad
        settings: root.settings
    }

    // What is scrolled goes under this.
    Divider {
        objectName: "foot"
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
