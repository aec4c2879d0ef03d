import QtQuick
import Varnhold

// A line as fine as the screen can draw, across or down.
Rectangle {
    property bool vertical: false

    implicitWidth: 1
    implicitHeight: 1
    color: Theme.separator
    Accessible.role: Accessible.Separator
    Accessible.ignored: true
}
