import QtQuick
import QtQuick.Templates as T
import Varnhold

// Something to scroll, with a scroll bar that shows while it is of use, or always.
Flickable {
    id: root

    property bool alwaysVisible: false

    readonly property var extent: contentItem.childrenRect
    readonly property bool scrollable: contentHeight > height

    clip: true
    contentWidth: width
    contentHeight: extent.height
    boundsBehavior: Flickable.StopAtBounds
    pixelAligned: true

    T.ScrollBar.vertical: SlimScrollBar {
        visible: root.scrollable
        lit: root.alwaysVisible || root.moving || touched.hovered
    }

    HoverHandler { id: touched }
}
