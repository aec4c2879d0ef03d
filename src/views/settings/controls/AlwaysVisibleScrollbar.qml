import QtQuick
import Varnhold

// Put into a scroll area, keeps that area's scroll bar on show for as long as there is anything to
// scroll, and not only while the pointer is there.
Item {
    id: root

    Component.onCompleted: {
        for (let area = root.parent; area; area = area.parent) {
            if (area instanceof ScrollArea) {
                area.alwaysVisible = true;
                return;
            }
        }
    }
}
