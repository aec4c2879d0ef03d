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

    // Brings what the keyboard has come to into view, in each thing that scrolls around it. What is
    // clicked must not run away from the pointer.
    function follow(item: var) {
        if (!item || item.focusReason === Qt.MouseFocusReason)
            return;
        for (let around = item.parent; around; around = around.parent) {
            if (around instanceof Flickable && around.visible)
                reveal(item, around);
        }
    }

    function reveal(item: var, area: Flickable) {
        const place = area.contentItem.mapFromItem(item, 0, 0);
        const margin = Theme.pad;
        if (item.height <= area.height && area.contentHeight > area.height) {
            const lowest = Math.max(0, place.y + item.height + margin - area.height);
            const highest = Math.max(0, place.y - margin);
            area.contentY = Math.min(Math.max(area.contentY, lowest), highest,
                                     area.contentHeight - area.height);
        }
        if (item.width <= area.width && area.contentWidth > area.width) {
            const rightmost = Math.max(0, place.x + item.width + margin - area.width);
            const leftmost = Math.max(0, place.x - margin);
            area.contentX = Math.min(Math.max(area.contentX, rightmost), leftmost,
                                     area.contentWidth - area.width);
        }
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
    Window.onActiveFocusItemChanged: follow(Window.activeFocusItem)
}
