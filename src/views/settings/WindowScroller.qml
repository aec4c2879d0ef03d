import QtQuick
import QtQuick.Templates as T
import Varnhold

// The whole window's content: never smaller than it was drawn for. A smaller window scrolls it, and
// follows the keyboard; a larger one gives it the room.
Flickable {
    id: root

    property real leastWidth
    property real leastHeight

    readonly property bool scrollable: contentWidth > width || contentHeight > height

    // What the keyboard goes to must be seen, once the areas inside have scrolled for it. What is
    // clicked must not run away from the pointer.
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: Qt.callLater(reveal)

    function reveal() {
        const item = focused as QtObject;
        if (!item || item.focusReason === Qt.MouseFocusReason || !scrollable)
            return;
        const place = contentItem.mapFromItem(focused, 0, 0);
        const inside = place.x >= 0 && place.y >= 0 && place.x < contentWidth && place.y < contentHeight;
        if (inside) {
            contentX = nearest(contentX, place.x, focused.width, width, contentWidth);
            contentY = nearest(contentY, place.y, focused.height, height, contentHeight);
        }
    }

    // Where to scroll to, from where it is now, to see all of a stretch with a little around it.
    function nearest(now: real, start: real, length: real, seen: real, whole: real): real {
        const least = start + length + Theme.pad - seen;
        const most = start - Theme.pad;
        return Math.max(0, Math.min(Math.min(Math.max(now, least), most), whole - seen));
    }

    contentWidth: Math.max(width, leastWidth)
    contentHeight: Math.max(height, leastHeight)
    boundsBehavior: Flickable.StopAtBounds
    interactive: scrollable
    pixelAligned: true
    clip: true

    T.ScrollBar.vertical: SlimScrollBar {
        visible: root.contentHeight > root.height
        lit: true
    }
    T.ScrollBar.horizontal: SlimScrollBar {
        visible: root.contentWidth > root.width
        lit: true
    }
}
