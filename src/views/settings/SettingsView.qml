import QtQuick
import Varnhold

// The whole settings window.
Rectangle {
    id: root

    required property SettingsModel settings

    color: Theme.window
}
