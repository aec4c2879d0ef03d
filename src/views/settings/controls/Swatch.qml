import QtQuick
import Varnhold

// A sample of a colour.
Rectangle {
    implicitWidth: 12
    implicitHeight: 12
    radius: Theme.slim
    border.width: 1
    border.color: Theme.separator
    Accessible.ignored: true
}
