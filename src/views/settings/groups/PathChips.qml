import QtQuick
import QtQuick.Templates as T
import Varnhold

// Paths as chips in as many columns as there is room for. Only those in sight exist; beyond some rows
// they scroll. One stop of the keyboard's way: arrow keys, Home and End go from chip to chip.
Item {
    id: root

    required property KeyedListModel paths
    required property string name
    required property real spacing

    signal removed(string path)

    readonly property real minimum: 180 // a chip's width
    readonly property int mostRows: 10
    readonly property int columns: Math.max(1, Math.floor((width + spacing) / (minimum + spacing)))
    readonly property int rows: Math.ceil(paths.count / columns)

    // The keyboard goes to the button of that chip, or of the nearest there is.
    function goTo(chip: int) {
        const wanted = Math.max(0, Math.min(grid.count - 1, chip));
        grid.positionViewAtIndex(wanted, GridView.Contain);
        grid.itemAtIndex(wanted)?.button.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitHeight: Math.max(0, Math.min(rows, mostRows) * grid.cellHeight - spacing)
    Accessible.role: Accessible.List
    Accessible.name: root.name
    Keys.onLeftPressed: goTo(grid.currentIndex - 1)
    Keys.onRightPressed: goTo(grid.currentIndex + 1)
    Keys.onUpPressed: goTo(grid.currentIndex - columns)
    Keys.onDownPressed: goTo(grid.currentIndex + columns)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            goTo(event.key === Qt.Key_Home ? 0 : grid.count - 1);
            event.accepted = true;
        }
    }

    readonly property WheelArea wheelArea: WheelArea { area: grid }

    InSight {
        id: sight

        item: root
    }

    GridView {
        id: grid

        width: parent.width + root.spacing // behind the last column there is none
        height: parent.height
        clip: root.rows > root.mostRows && sight.holds
        interactive: false
        boundsBehavior: Flickable.StopAtBounds
        keyNavigationEnabled: false
        pixelAligned: true
        cellWidth: Math.floor((root.width + root.spacing) / root.columns)
        cellHeight: 22 + root.spacing
        model: root.paths
        delegate: Chip {
            id: chip

            required property int index
            required property string path
            required property string name
            required property string image

            width: grid.cellWidth - root.spacing
            symbol: Theme.symbol(image)
            text: name
            help: path
            reachable: GridView.isCurrentItem || held
            onRemoved: root.removed(path)

            // A stop of the Tab key must stay one until the keyboard has left it for good.
            property bool held: false

            Timer {
                id: later

                interval: 0
                onTriggered: chip.followFocus()
            }

            function followFocus() {
                held = button.activeFocus;
                if (held)
                    grid.currentIndex = index;
            }

            Connections {
                target: chip.button
                function onActiveFocusChanged() {
                    if (chip.button.activeFocus)
                        chip.followFocus();
                    else
                        later.restart();
                }
            }
        }

        T.ScrollBar.vertical: SlimScrollBar {
            x: root.width - width
            visible: root.rows > root.mostRows
            lit: true
        }
    }
}
