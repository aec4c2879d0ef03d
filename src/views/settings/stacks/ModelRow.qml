import QtQuick
import Varnhold

// A model's row in a stack. Faint while it is dragged; what flies with the pointer isn't.
DragSource {
    id: root

    required property int index
    required property string uid
    required property string tag
    required property string ground
    required property bool isDragging
    required property bool isDownloading
    required property bool deletable
    required property bool removable
    required property bool fading
    required property string owner

    signal deleteRequested()
    signal removeRequested()

    payload: uid
    kind: "model"
    visual: block.body
    aroundColor: true
    Accessible.description: "%1. Press Space to move".arg(root.tag)

    ModelBlockView {
        id: block

        width: parent.width - (remove.visible ? remove.width + 2 : 0)
        height: parent.height
        name: root.name
        tag: root.tag
        ground: root.ground
        isDragging: root.isDragging
        fading: root.fading
        isDownloading: root.isDownloading
        deletable: root.deletable
        focused: root.activeFocus
        onTouched: root.forceActiveFocus(Qt.MouseFocusReason)
        Accessible.ignored: true
        onDeleteRequested: root.deleteRequested()
    }

    IconButton {
        id: remove

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        visible: root.removable
        symbol: "minus-circle"
        size: Theme.smallSize
        color: Theme.secondaryText
        Accessible.name: "Remove %1 from %2".arg(root.name).arg(root.owner)
        onClicked: root.removeRequested()
    }
}
