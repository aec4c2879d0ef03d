import QtQuick
import Varnhold

// One model of the library, to be dragged into chains or taken out of the library for good.
FocusItem {
    id: root

    required property LibraryPart library
    required property RowList list
    required property int index
    required property string uid
    required property string name
    required property string tag
    required property string ground
    required property bool isDragging
    required property bool isDownloading
    required property string kind

    readonly property bool isCurrent: ListView.isCurrentItem
    property bool pooled: false

    implicitHeight: block.implicitHeight
    visible: !pooled
    tabStop: isCurrent
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: tag
    Accessible.focusable: true
    Keys.onSpacePressed: source.pickUp()
    onActiveFocusChanged: if (activeFocus) list.currentIndex = index
    ListView.onPooled: pooled = true
    ListView.onReused: pooled = false

    DragSource {
        id: source

        anchors.fill: parent
        activeFocusOnTab: false
        payload: root.uid
        kind: root.kind
        name: root.name
        visual: block.body
        cursorShape: root.kind === "model" ? Qt.OpenHandCursor : Qt.ArrowCursor
        onBegan: root.library.startDrag(root.index)
        Accessible.ignored: true
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: source.cursorShape
        onPressed: root.forceActiveFocus(Qt.MouseFocusReason)
    }

    ModelBlockView {
        id: block

        anchors.fill: parent
        name: root.name
        tag: root.tag
        ground: root.ground
        isDragging: root.isDragging
        fading: root.library.fading
        isDownloading: root.isDownloading
        deletable: true
        reachable: root.isCurrent
        focused: root.activeFocus
        onTouched: root.forceActiveFocus(Qt.MouseFocusReason)
        Accessible.ignored: true
        onDeleteRequested: root.library.deleteModel(root.index)
    }

    FocusRing {
        shown: root.visualFocus
        aroundColor: true
    }
}
