import QtQuick
import Varnhold

// Where a list's rows are under a drag, and what the list is told of it.
DropArea {
    id: root

    required property var list // of draggable rows

    property var over: null // the identity of the row under the pointer

    function uidUnder(y: real): var {
        const row = list.rowUnder(y);
        return row >= 0 ? list.uidAt(row) : null;
    }

    // Rows change places with each other, and keep what else is dropped on them without using it.
    function takes(): bool {
        if (over !== null)
            return list.rowOf(DragSession.payload) >= 0;
        return !list.zone || list.zone.useful;
    }

    function track(drag: var) {
        const uid = uidUnder(drag.y);
        if (uid !== over) {
            over = uid;
            if (uid !== null) {
                DragSession.remind();
                list.rowEntered(uid);
            }
        }
        settle();
        drag.action = DragSession.answer(takes(), drag.proposedAction);
    }

    // The rows have changed places under the pointer, which hasn't come over another one.
    function settle() {
        if (containsDrag)
            over = uidUnder(drag.y);
    }

    onEntered: drag => {
        drag.accepted = drag.hasText && !drag.hasUrls && DragSession.suits(list.kinds);
        if (drag.accepted) {
            over = null;
            track(drag);
        }
    }
    onPositionChanged: drag => track(drag)
    onDropped: drop => {
        drop.acceptProposedAction();
        const row = list.rowUnder(drop.y);
        if (row >= 0) {
            DragSession.remind();
            list.rowDropped(list.uidAt(row));
        } else {
            list.freeSpaceDropped(DragSession.textOf(drop.text), drop.x, drop.y);
        }
    }
}
