import QtQuick
import QtQuick.Templates as T
import Varnhold

// A long list of rows, of which only those in sight exist. One stop of the keyboard's way through the
// window: the arrow keys, Home, End and the page keys go from row to row.
//
// Rows let the keyboard in while `ListView.isCurrentItem` is true, and become the current one when
// they have it.
ListView {
    id: root

    property string name

    readonly property bool scrollable: contentHeight + topMargin + bottomMargin > height + 1
    // The scroll bar runs beside this, whether or not there is anything to scroll just now.
    readonly property real room: width - Theme.gutter

    // The keyboard goes to that row, or to the nearest there is.
    function goTo(row: int) {
        if (count === 0)
            return;
        const wanted = Math.max(0, Math.min(count - 1, row));
        positionViewAtIndex(wanted, ListView.Contain);
        itemAtIndex(wanted).forceActiveFocus(Qt.TabFocusReason);
    }

    function perPage(): int {
        return Math.max(1, Math.floor(height / Math.max(1, currentItem.height + spacing)));
    }

    readonly property InSight sight: InSight { item: root }
    readonly property WheelArea wheelArea: WheelArea { area: root }

    clip: sight.holds
    interactive: false
    reuseItems: true
    spacing: Theme.tight
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    pixelAligned: true
    Accessible.role: Accessible.List
    Accessible.name: root.name
    Keys.onUpPressed: goTo(currentIndex - 1)
    Keys.onDownPressed: goTo(currentIndex + 1)
    Keys.onPressed: event => {
        const steps = {
            [Qt.Key_Home]: -count, [Qt.Key_End]: count,
            [Qt.Key_PageUp]: -perPage(), [Qt.Key_PageDown]: perPage()
        };
        if (event.key in steps) {
            goTo(currentIndex + steps[event.key]);
            event.accepted = true;
        }
    }

    T.ScrollBar.vertical: SlimScrollBar {
        visible: root.scrollable
        lit: touched.hovered
    }

    HoverHandler {
        id: touched

        parent: root
    }
}
