import QtQuick
import Varnhold

// One of the window's signs in one colour, about as high as text of that size.
Image {
    id: root

    property string name
    property real size: Theme.bodySize
    property color color: Theme.text

    readonly property int side: Math.round(size * 1.2)

    width: side
    height: side
    sourceSize.width: side
    sourceSize.height: side
    source: name === "" ? "" : "image://symbol/" + name + "?" + color.toString().slice(1)
    fillMode: Image.PreserveAspectFit
    Accessible.ignored: true
}
