import QtQuick

// Lets the wheel scroll an area that a pressed pointer doesn't.
//
// It lies behind the content, so that what scrolls inside of it comes first; where there is no way
// to go on, the wheel is left to what lies around.
MouseArea {
    id: root

    required property Flickable area

    readonly property real least: area.originY - area.topMargin
    readonly property real most: Math.max(least, area.originY + area.contentHeight + area.bottomMargin - area.height)

    // False if there is no way to go on.
    function scrollBy(points: real): bool {
        const to = Math.max(least, Math.min(most, area.contentY + points));
        const moves = to !== area.contentY;
        if (moves)
            area.contentY = to;
        return moves;
    }

    function scrollAcross(points: real): bool {
        const to = Math.max(0, Math.min(area.contentWidth - area.width, area.contentX + points));
        const moves = to !== area.contentX;
        if (moves)
            area.contentX = to;
        return moves;
    }

    parent: area
    width: area.width
    height: area.height
    z: -1
    acceptedButtons: Qt.NoButton
    onWheel: wheel => {
        const step = 20 * Qt.styleHints.wheelScrollLines / 120;
        const points = (pixels, angle) => -(pixels !== 0 ? pixels : angle * step);
        const across = Math.abs(wheel.angleDelta.x) > Math.abs(wheel.angleDelta.y);
        wheel.accepted = across ? root.scrollAcross(points(wheel.pixelDelta.x, wheel.angleDelta.x))
                                : root.scrollBy(points(wheel.pixelDelta.y, wheel.angleDelta.y));
    }
}
