import QtQuick
import Varnhold

// Every control in each of its states, to look at.
Rectangle {
    implicitWidth: 960
    implicitHeight: 820
    color: Theme.window

    Row {
        anchors.fill: parent
        anchors.margins: 20
        spacing: 28

        GalleryInputs { width: 290 }
        GalleryTexts { width: 322 }
        GalleryGrounds { width: 252 }
    }
}
