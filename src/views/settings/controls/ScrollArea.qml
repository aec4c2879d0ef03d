import QtQuick
import QtQuick.Templates as T
import Varnhold

// Something to scroll by wheel, keyboard and a scroll bar that shows while the pointer is there, or
// always. A pressed pointer doesn't scroll: it drags rows or marks text.
Flickable {
    id: root

    property bool alwaysVisible: false

    default property alias content: holder.data

    readonly property bool scrollable: contentHeight > height
    // The scroll bar runs beside this, whether or not there is anything to scroll just now.
    readonly property real room: width - Theme.gutter

    // What the keyboard goes to must be seen.
    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: if (focused) reveal(focused)

    function holds(item: Item): bool {
        for (let above = item; above; above = above.parent) {
            if (above === contentItem)
                return true;
        }
        return false;
    }

    function reveal(item: var) {
        // What is clicked must not run away from the pointer, and an editor follows its own cursor.
        const byKeyboard = item.visualFocus ?? item.focusReason !== Qt.MouseFocusReason;
        if (!byKeyboard || item.height > height || !holds(item))
            return;
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.pad;
        const bottom = top + item.height + 2 * Theme.pad;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.max(0, Math.min(contentHeight, bottom) - height);
    }

    readonly property WheelArea wheelArea: WheelArea { area: root }

    // What is scrolled out of the areas around this one is not drawn at all.
    readonly property InSight sight: InSight { item: root }

    contentItem.opacity: sight.holds ? 1 : 0
    clip: true
    interactive: false
    contentWidth: width
    contentHeight: holder.height
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true

    T.ScrollBar.vertical: SlimScrollBar {
        visible: root.scrollable
        lit: root.alwaysVisible || touched.hovered
    }

    Item {
        id: holder

        parent: root.contentItem
        width: root.width
        height: childrenRect.height
    }

    HoverHandler {
        id: touched

        parent: root
    }
}
