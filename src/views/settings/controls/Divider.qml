import QtQuick
import Varnhold

// A line as fine as the screen can draw and the eyes can see, across or down.
Rectangle {
    property bool vertical: false

    readonly property real line: Theme.strong ? Theme.hair : 1 / Screen.devicePixelRatio

    implicitWidth: line
    implicitHeight: line
    color: Theme.separator
    Accessible.role: Accessible.Separator
    Accessible.ignored: true
}
