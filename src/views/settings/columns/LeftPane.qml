import QtQuick
import Varnhold

// The left pane: the bots above, and in all the room they leave the library.
Rectangle {
    id: root

    required property SettingsModel settings

    readonly property int idealWidth: 280

    implicitWidth: idealWidth
    implicitHeight: 850
    color: Theme.pane

    BotsBlock {
        id: bots

        x: Theme.edge
        y: Theme.pad
        width: parent.width - 2 * Theme.edge
        height: implicitHeight
        maximumHeight: root.height * 0.52
        bots: root.settings.bots
        showHints: root.settings.showHints
    }

    Divider {
        id: line

        anchors.top: bots.bottom
        anchors.topMargin: Theme.pad
        width: parent.width
    }

    LibraryBlock {
        anchors.top: line.bottom
        anchors.topMargin: Theme.pad
        anchors.bottom: parent.bottom
        x: Theme.edge
        width: parent.width - 2 * Theme.edge
        library: root.settings.library
        showHints: root.settings.showHints
    }
}
