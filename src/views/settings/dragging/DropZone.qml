import QtQuick
import Varnhold

// A place that takes things of some kinds, and text that other programs drag here. What stands in
// it may be a place of its own and is asked first.
DropTarget {
    id: root

    // What a pointer may bring over the zone: it takes all of it, and passes on what it can't use.
    property var comers: root.kinds
    // Something of these is over the zone itself.
    readonly property bool hovered: area.containsDrag || root.marked >= 0 || root.innerHover
    // Set by a list in the zone while a drag is over its free space.
    property bool innerHover: false
    // Whether a drop of what is dragged would come to anything: the pointer says so where it wouldn't.
    // The drop comes all the same.
    property bool useful: true
    property point dropPlace // of the pointer as it let go; a drag by keys has none

    function answer(drag: var) {
        drag.action = DragSession.answer(root.useful, drag.proposedAction);
    }

    default property alias content: area.data

    signal textDropped(text: string)

    stops: 1
    markedArea: Qt.rect(0, 0, root.width, root.height)
    markedName: root.name
    implicitWidth: area.childrenRect.width
    implicitHeight: area.childrenRect.height
    onStopDropped: (stop, text) => {
        root.dropPlace = Qt.point(NaN, NaN);
        root.textDropped(text);
    }
    Accessible.role: Accessible.Grouping
    Accessible.name: root.name

    DropArea {
        id: area

        anchors.fill: parent
        onEntered: drag => {
            drag.accepted = drag.hasText && !drag.hasUrls && DragSession.suits(root.comers);
            root.answer(drag);
        }
        onPositionChanged: drag => root.answer(drag)
        onDropped: drop => {
            drop.acceptProposedAction();
            root.dropPlace = Qt.point(drop.x, drop.y);
            root.textDropped(DragSession.textOf(drop.text));
        }
    }

    TargetMark {
        visible: root.marked >= 0
        area: root.markedArea
    }
}
