import QtQuick

// Which rows of a long column are near enough to what is seen of it that they have to exist: those in
// sight, and some beyond for the keyboard to go on to. Of a short column, all.
QtObject {
    id: root

    required property Item item // in which the rows stand, from its top
    required property real pitch // from one row to the next
    required property int count

    readonly property int spare: 15
    readonly property bool bounded: count > 3 * spare && sight.around !== null

    property int first: 0
    property int end: 2 * spare // until there has been a frame to look at

    readonly property InSight sight: InSight {
        item: root.item
        enabled: false // it only tells what scrolls the rows
    }

    function holds(row: int): bool {
        return !bounded || (row >= first && row < end);
    }

    function rowAt(y: real): int {
        return Math.max(0, Math.min(count, Math.floor(y / pitch)));
    }

    // Not at every step of a scroll.
    function look() {
        const top = -item.mapToItem(sight.around, 0, 0).y;
        const from = rowAt(top);
        const to = rowAt(top + sight.around.height + pitch);
        const near = spare / 3;
        if ((first > 0 && from < first + near) || (end < count && to > end - near)) {
            first = Math.max(0, from - spare);
            end = Math.min(count, to + spare);
        }
    }

    readonly property Connections frames: Connections {
        target: root.bounded ? root.item.Window.window : null

        // Before each frame, when everything has its place.
        function onAfterAnimating() { root.look(); }
    }
}
