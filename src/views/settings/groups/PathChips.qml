import QtQuick
import Varnhold

// Paths as chips in as many columns as there is room for.
Grid {
    id: root

    required property KeyedListModel paths
    required property string name

    signal removed(string path)

    readonly property real minimum: 180
    readonly property real chipWidth: (width - (columns - 1) * spacing) / columns

    columns: Math.max(1, Math.floor((width + spacing) / (minimum + spacing)))
    Accessible.role: Accessible.List
    Accessible.name: root.name

    Repeater {
        model: root.paths

        Chip {
            required property string path
            required property string name
            required property string image

            width: root.chipWidth
            symbol: Theme.symbol(image)
            text: name
            help: path
            onRemoved: root.removed(path)
        }
    }
}
