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
                    spacing: 5

                    Label { text: "Architect Chain"; font: Theme.headline }
                    Stepper { label: "Effort"; valueText: "High" }
                    ModelBlock {
                        Layout.fillWidth: true
                        name: "A model with a name that goes on and on"
                        tag: "Anthropic"
                        ground: ["purple", "blue", "green", "orange", "pink", "teal"][section.index]
                    }
                }
            }
        }
    }

    Card {
        Layout.fillWidth: true
        outlined: true

        MenuRow { width: 200; text: "Restart"; symbol: "arrow-clockwise"; highlighted: true }
        MenuRow { y: 24; width: 200; text: "Delete"; symbol: "trash"; destructive: true }
    }

    Toast {
        text: "Preferences Saved"
        shown: true
    }
}
