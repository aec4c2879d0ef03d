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
    function follow(item: Item) {
        if (!item || item.focusReason === Qt.MouseFocusReason)
            return;
        for (let around = item.parent; around; around = around.parent) {
            if (around instanceof Flickable && around.visible)
                reveal(item, around);
        }
    }

    function reveal(item: Item, area: Flickable) {
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

    T.ScrollBar.vertical: SlimBar { visible: root.contentHeight > root.height }
    T.ScrollBar.horizontal: SlimBar { visible: root.contentWidth > root.width }
    Window.onActiveFocusItemChanged: follow(Window.activeFocusItem)

    component SlimBar: T.ScrollBar {
        id: bar

        readonly property int thickness: hovered || pressed ? 7 : 5

        implicitWidth: 11
        implicitHeight: 11
        padding: 2
        policy: T.ScrollBar.AlwaysOn
        minimumSize: 0.08
        z: 2
        Accessible.name: qsTr("Scroll bar of the window")

        contentItem: Item {
            implicitWidth: 7
            implicitHeight: 7

            Rectangle {
                anchors.right: parent.right
                anchors.bottom: parent.bottom
                width: bar.orientation === Qt.Vertical ? bar.thickness : parent.width
                height: bar.orientation === Qt.Vertical ? parent.height : bar.thickness
                radius: bar.thickness / 2
                color: Theme.text
                opacity: bar.pressed ? 0.5 : bar.hovered ? 0.4 : 0.25

                Behavior on opacity { NumberAnimation { duration: Theme.calm } }
            }
        }
    }
}
