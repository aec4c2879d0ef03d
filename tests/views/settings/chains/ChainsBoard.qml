import QtQuick
import Varnhold

// The chains and groups alone, as the window has them.
Rectangle {
    id: root

    required property SettingsModel settings

    color: Theme.window

    ChainsPane {
        anchors.fill: parent
        settings: root.settings
    }
}
