import QtQuick
import Varnhold

// Says to a screen reader where a drag by keys is and how it ended. One for the window.
Item {
    width: 1
    height: 1
    Accessible.role: Accessible.AlertMessage
    Accessible.name: KeyboardDrag.announcement
    Accessible.ignored: KeyboardDrag.announcement === ""
}
