import QtQuick
import Varnhold

// What had the keyboard before a menu or a sheet took it, so that it can be given back.
QtObject {
    property var item: null // whatever it is: controls tell of their ring, other items have none
    property bool visual: false

    function remember(near: Item) {
        item = near.Window.activeFocusItem;
        visual = item !== null && item.visualFocus === true;
    }

    function giveBack() {
        if (item)
            item.forceActiveFocus(visual ? Qt.TabFocusReason : Qt.OtherFocusReason);
        item = null;
    }
}
