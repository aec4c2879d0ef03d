import QtQuick
import Varnhold

// The left pane and the top of the right one, as they stand in the window.
Item {
    id: root

    required property SettingsModel settings
    property int paneWidth: 280

    anchors.fill: parent

    LeftPane {
        width: root.paneWidth
        height: parent.height
        settings: root.settings
    }

    TopBlock {
        x: root.paneWidth
        width: parent.width - x
        height: 420
        settings: root.settings
    }
}
