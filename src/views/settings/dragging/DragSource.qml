import QtQuick
import Varnhold

// Makes what stands in it something to drag, by pointer or by Space.
//
// `began` asks the owner to note what is being dragged. It is given again whenever the drag comes to
// something that asks, for such notes are forgotten after a while, and a hand or a key may take
// longer than that; noting the same thing twice must do no harm.
Item {
    id: root

    required property string payload
    required property string kind // "model" or "bot"
    required property string name // as it is announced
    property Item visual: root // what the drag shows
    property int cursorShape: Qt.OpenHandCursor
    property bool aroundColor: false // it has a strong colour of its own

    readonly property alias hovered: hover.hovered

    signal began()

    function pickUp() {
        if (!DragSession.active) {
            KeyboardDrag.pickUp(root, root.payload, root.kind, root.name);
        }
    }

    activeFocusOnTab: true
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: "Press Space to move"
    Accessible.focusable: true
    Accessible.onPressAction: root.pickUp()
    Keys.onSpacePressed: root.pickUp()

    DragHandler {
        target: null
        dragThreshold: 6 // less than scrolling needs
        onActiveChanged: {
            if (active && !DragSession.active && !KeyboardDrag.active) {
                root.began();
                const hot = root.mapToItem(root.visual, centroid.pressPosition);
                DragSession.start(root.visual, root.payload, root.kind, hot.x, hot.y);
                DragSession.source = root;
            }
        }
    }

    HoverHandler {
        id: hover

        cursorShape: root.cursorShape
    }

    FocusRing {
        z: 1
        aroundColor: root.aroundColor
        shown: root.activeFocus && !KeyboardDrag.active
    }
}
