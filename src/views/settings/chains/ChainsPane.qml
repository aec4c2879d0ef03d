import QtQuick
import Varnhold

// All six chains and the custom groups, to be scrolled.
ScrollArea {
    id: root

    required property SettingsModel settings

    readonly property real margin: Theme.edge
    readonly property real spacing: Theme.pad

    contentHeight: rows.height + 2 * margin

    AlwaysVisibleScrollbar {}

    component SectionRow: Row {
        id: row

        required property var chains

        readonly property real sectionWidth: (width - (chains.length - 1) * spacing) / chains.length
        // The highest section says how high all are, and so do the highest header and zone.
        readonly property real sectionHeight: highest(section => section.implicitHeight)
        readonly property real headerHeight: highest(section => section.ownHeaderHeight)
        readonly property real botsHeight: highest(section => section.ownBotsHeight)

        function highest(height: var): real {
            let most = 0;
            for (let i = 0; i < sections.count; ++i) {
                const section = sections.itemAt(i);
                if (section)
                    most = Math.max(most, height(section));
            }
            return most;
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
                headerHeight: row.headerHeight
                botsHeight: row.botsHeight
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
        width: root.width - 2 * root.margin // the scroll bar runs in the margin
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
