import QtQuick
import Varnhold

// Rows of one height that change places while one of them is dragged over the others.
//
// Which row the pointer is over follows from where the rows will come to rest, never from where
// they swing just now. A drop on a row stays with the row, whether or not anything comes of it;
// one on the space between or under the rows is for the zone around the list, and where there is
// none, for the list's own `zoneDropped`.
DropTarget {
    id: root

    required property KeyedListModel model
    required property Component delegate // an item with `required property int index`
    required property real rowHeight
    property real spacing: 0
    property bool springs: true // false while the first rows are put up
    property string uidRole: "uid" // the name of the value that identifies a row

    property real landing: NaN // from where the next row that comes is to glide to its place

    readonly property real pitch: root.rowHeight + root.spacing
    readonly property int rows: root.model.count
    property int arrangement: 0 // changes with the order of the rows
    // The zone around the list, if there is one.
    readonly property var zone: root.zoneAround()

    signal rowEntered(uid: string)
    signal rowDropped(uid: string)
    signal zoneDropped(text: string)

    function zoneAround(): var {
        for (let item = root.parent; item; item = item.parent) {
            if (item instanceof DropZone) {
                return item;
            }
        }
        return null;
    }

    function uidAt(row: int): string {
        return root.model.value(row, root.uidRole) ?? "";
    }

    // The row of that identity, or -1.
    function rowOf(uid: string): int {
        for (let row = 0; row < root.rows; ++row) {
            if (root.uidAt(row) === uid) {
                return row;
            }
        }
        return -1;
    }

    function rowUnder(y: real): int {
        const row = Math.floor(y / root.pitch);
        return y >= 0 && row < root.rows && y - row * root.pitch < root.rowHeight ? row : -1;
    }

    function rearranged() {
        ++root.arrangement;
        area.settle();
    }

    // The next row comes from there; what is dropped may have none, or take a while.
    function expectAt(y: real) {
        root.landing = y - root.rowHeight / 2;
        forget.restart();
    }

    function freeSpaceDropped(text: string, x: real, y: real) {
        if (root.zone) {
            root.zone.dropPlace = root.mapToItem(root.zone, x, y);
            root.zone.textDropped(text);
        } else {
            root.zoneDropped(text);
        }
    }

    implicitHeight: Math.max(0, root.rows * root.pitch - root.spacing)
    home: root.arrangement >= 0 && KeyboardDrag.active ? root.rowOf(KeyboardDrag.payload) : -1
    // Rows take only each other; the free space is the zone's unless there is none.
    stops: (root.home >= 0 ? root.rows : 0) + (root.zone ? 0 : 1)
    readonly property bool rowMarked: root.home >= 0 && root.marked < root.rows
    markedArea: root.rowMarked ? Qt.rect(0, root.marked * root.pitch, root.width, root.rowHeight)
        : Qt.rect(0, 0, root.width, root.height)
    markedName: root.rowMarked ? "%1, place %2 of %3".arg(root.name).arg(root.marked + 1).arg(root.rows)
        : root.name
    onStopEntered: stop => {
        if (root.rowMarked) {
            root.rowEntered(root.uidAt(stop));
        }
    }
    onStopDropped: (stop, text) => {
        if (root.rowOf(text) >= 0 && stop < root.rows) {
            root.rowDropped(root.uidAt(stop));
        } else {
            root.freeSpaceDropped(text, NaN, NaN);
        }
    }
    Accessible.role: Accessible.List
    Accessible.name: root.name

    Repeater {
        model: root.model

        delegate: root.delegate
        onItemAdded: (index, item) => {
            place.createObject(item, {row: item, list: root, from: root.landing});
            root.landing = NaN;
        }
    }

    Timer {
        id: forget

        interval: 500
        onTriggered: root.landing = NaN
    }

    Component {
        id: place

        RowPlace {}
    }

    RowDropArea {
        id: area

        anchors.fill: parent
        list: root
    }

    Binding {
        target: root.zone
        when: root.zone !== null
        property: "innerHover"
        value: area.containsDrag && area.over === null
        restoreMode: Binding.RestoreNone
    }

    Connections {
        target: root.model

        function onRowsMoved() { root.rearranged(); }
        function onRowsInserted() { root.rearranged(); }
        function onRowsRemoved() { root.rearranged(); }
    }

    TargetMark {
        visible: root.marked >= 0
        area: root.markedArea
        margin: root.rowMarked ? 3 : 0
    }
}
