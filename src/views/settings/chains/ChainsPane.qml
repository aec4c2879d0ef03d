import QtQuick
import Varnhold

// All six chains and the custom groups, to be scrolled.
ScrollArea {
    id: root

    required property SettingsModel settings

    readonly property real margin: 5
    readonly property real spacing: Theme.pad

    contentHeight: rows.height + 2 * margin

    AlwaysVisibleScrollbar {}

    component SectionRow: Row {
        id: row

        required property var chains

        readonly property real sectionWidth: (width - (chains.length - 1) * spacing) / chains.length
        // The highest section says how high all are.
        readonly property real sectionHeight: {
            let highest = 0;
            for (let i = 0; i < sections.count; ++i)
                highest = Math.max(highest, sections.itemAt(i)?.implicitHeight ?? 0);
            return highest;
        }

        width: parent.width
        spacing: root.spacing

        Repeater {
            id: sections

            model: row.chains

            ChainSection {
                required property ChainPart modelData

                width: row.sectionWidth
                height: row.sectionHeight
                chain: modelData
                showHints: root.settings.showHints
                springs: root.settings.springs
            }
        }
    }

    Column {
        id: rows

        x: root.margin
        y: root.margin
        width: root.room - 2 * root.margin
        spacing: root.spacing

        GovernorSection {
            width: parent.width
            settings: root.settings
            spacing: root.spacing
        }

        Repeater {
            model: root.settings.chainRows

            SectionRow {
                required property var modelData

                chains: modelData
            }
        }
    }
}
