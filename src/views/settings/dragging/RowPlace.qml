import QtQuick

// Keeps one row of a list where it belongs; once it stands, it swings to where it belongs next.
QtObject {
    id: root

    required property var row // has an `index`
    required property var list
    property real from: NaN // where it comes from, if that is to be seen
    property bool stands: false
    property real place: isNaN(from) ? home : from

    readonly property real home: root.row.index * root.list.pitch

    Behavior on place {
        enabled: root.stands && root.list.springs
        SpringAnimation { spring: 4; damping: 0.35; epsilon: 0.25 }
    }

    onPlaceChanged: root.row.y = root.place
    Component.onCompleted: {
        root.row.y = root.place;
        root.row.width = Qt.binding(() => root.list.width);
        root.row.height = Qt.binding(() => root.list.rowHeight);
        root.stands = true;
        root.from = NaN;
    }
}
