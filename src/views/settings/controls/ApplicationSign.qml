import QtQuick

// The program's own icon.
Image {
    id: root

    property int side: 64

    width: side
    height: side
    sourceSize.width: side
    sourceSize.height: side
    source: "image://application/icon"
    Accessible.ignored: true
}
