import QtQuick
import QtQuick.Templates as T
import Varnhold

// The whole window's content: never smaller than it was drawn for. A smaller window scrolls it, and
// follows the keyboard; a larger one gives it the room. Its scroll bars stand beside it, for there are
// others at the edges of what it shows. It fills its parent.
Flickable {
    id: root

    property real leastWidth
    property real leastHeight

    readonly property real barWidth: 11
    readonly property bool scrollsDown: leastHeight > parent.height
        || (leastWidth > parent.width && leastHeight > parent.height - barWidth)
    readonly property bool scrollsAcross: leastWidth > parent.width
        || (leastHeight > parent.height && leastWidth > parent.width - barWidth)
    readonly property bool scrollable: scrollsDown || scrollsAcross

    readonly property WheelArea wheelArea: WheelArea { area: root }

    // What the keyboard goes to must be seen, once the areas inside have scrolled for it. What is
    // clicked must not run away from the pointer.
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: soon.restart()

    function reveal(item: var) {
        if (!item || item.focusReason === Qt.MouseFocusReason || !scrollable)
            return;
        const place = contentItem.mapFromItem(item, 0, 0);
        const inside = place.x >= 0 && place.y >= 0 && place.x < contentWidth && place.y < contentHeight;
        if (inside) {
            contentX = nearest(contentX, place.x, item.width, width, contentWidth);
            contentY = nearest(contentY, place.y, item.height, height, contentHeight);
        }
    }

    // Where to scroll to, from where it is now, to see all of a stretch with a little around it.
    function nearest(now: real, start: real, length: real, seen: real, whole: real): real {
        const least = start + length + Theme.pad - seen;
        const most = start - Theme.pad;
        return Math.max(0, Math.min(Math.min(Math.max(now, least), most), whole - seen));
    }

    Timer {
        id: soon

        interval: 0
        onTriggered: root.reveal(root.focused)
    }

    anchors.fill: parent
    anchors.rightMargin: scrollsDown ? barWidth : 0
    anchors.bottomMargin: scrollsAcross ? barWidth : 0
    contentWidth: Math.max(width, leastWidth)
    contentHeight: Math.max(height, leastHeight)
    boundsBehavior: Flickable.StopAtBounds
    interactive: false
    pixelAligned: true
    clip: true

    T.ScrollBar.vertical: SlimScrollBar {
        parent: root.parent
        anchors.left: root.right
        anchors.top: root.top
        anchors.bottom: root.bottom
        visible: root.scrollsDown
        lit: true
    }
    T.ScrollBar.horizontal: SlimScrollBar {
        parent: root.parent
        anchors.top: root.bottom
        anchors.left: root.left
        anchors.right: root.right
        visible: root.scrollsAcross
        lit: true
    }
}
