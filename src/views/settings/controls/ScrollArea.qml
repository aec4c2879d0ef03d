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
        if (item.visualFocus !== true || !holds(item))
            return;
        const top = item.mapToItem(contentItem, 0, 0).y - Theme.pad;
        const bottom = top + item.height + 2 * Theme.pad;
        if (top < contentY)
            contentY = Math.max(0, top);
        else if (bottom > contentY + height)
            contentY = Math.max(0, Math.min(contentHeight, bottom) - height);
    }

    // False if there is no way to go on.
    function scrollBy(points: real): bool {
        const to = Math.max(0, Math.min(contentHeight - height, contentY + points));
        const moves = scrollable && to !== contentY;
        if (moves)
            contentY = to;
        return moves;
    }

    // Behind the content, so that what scrolls inside of it comes first.
    readonly property MouseArea wheelArea: MouseArea {
        parent: root
        width: root.width
        height: root.height
        z: -1
        acceptedButtons: Qt.NoButton
        onWheel: wheel => {
            const step = 20 * Qt.styleHints.wheelScrollLines / 120;
            const points = wheel.pixelDelta.y !== 0 ? wheel.pixelDelta.y : wheel.angleDelta.y * step;
            wheel.accepted = root.scrollBy(-points);
        }
    }

    clip: true
    interactive: false
    contentWidth: width
    contentHeight: holder.height
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true

    T.ScrollBar.vertical: T.ScrollBar {
        id: bar

        readonly property bool wide: hovered || pressed

        width: 11
        padding: 2
        visible: root.scrollable
        policy: T.ScrollBar.AlwaysOn
        minimumSize: 0.08
        z: 2
        Accessible.name: qsTr("Scroll bar")

        contentItem: Item {
            implicitWidth: 7

            Rectangle {
                anchors.right: parent.right
                width: bar.wide ? 7 : 5
                height: parent.height
                radius: width / 2
                color: Theme.text
                opacity: bar.pressed ? 0.5 : bar.hovered ? 0.4
                    : root.alwaysVisible || touched.hovered ? 0.25 : 0

                Behavior on opacity { NumberAnimation { duration: Theme.calm } }
                Behavior on width { NumberAnimation { duration: Theme.quick } }
            }
        }
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
