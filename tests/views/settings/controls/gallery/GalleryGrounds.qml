import QtQuick
import QtQuick.Layouts
import Varnhold

// What stands on grounds of its own: sections, menus, the toast.
ColumnLayout {
    id: root

    readonly property var tints: [
        Qt.rgba(1.0, 0.93, 0.55, 1), Qt.rgba(0.85, 0.92, 1.0, 1), Qt.rgba(0.88, 1.0, 0.88, 1),
        Qt.rgba(1.0, 0.95, 0.82, 1), Qt.rgba(1.0, 0.88, 0.95, 1), Qt.rgba(0.88, 0.95, 1.0, 1)
    ]

    spacing: 14

    GalleryGroup {
        title: "SECTIONS"
        Layout.fillWidth: true

        Repeater {
            model: root.tints

            Card {
                id: section

                required property color modelData
                required property int index

                Layout.fillWidth: true
                tint: Theme.chainGround(modelData)

                ColumnLayout {
                    width: section.width - 2 * section.padding
                    spacing: 3

                    Label { text: "Architect Chain"; font: Theme.headline }
                    Stepper { label: "Effort"; valueText: "High" }
                    ModelBlockView {
                        Layout.fillWidth: true
                        implicitHeight: 28
                        name: "A model with a name that goes on and on"
                        tag: "Anthropic"
                        ground: ["purple", "blue", "green", "orange", "pink", "teal"][section.index]
                    }
                }
            }
        }
    }

    Panel {
        implicitWidth: 190
        implicitHeight: rows.height + 8
        radius: 8

        Column {
            id: rows

            x: 4
            y: 4

            MenuRow { width: 182; text: "Restart"; symbol: "arrow-clockwise"; highlighted: true }
            MenuRow { width: 182; kind: "divider" }
            MenuRow { width: 182; kind: "section"; text: "Connection Service" }
            MenuRow { width: 182; text: "telegram"; checked: true }
            MenuRow { width: 182; text: "Delete"; symbol: "trash"; destructive: true }
        }
    }

    Toast {
        text: "Preferences Saved"
        shown: true
    }
}
