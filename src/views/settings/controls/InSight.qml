import QtQuick

// Whether anything of an item is seen in the areas that scroll it.
//
// Drawn by software, an item that clips and has been scrolled out of such an area has no clip left, and
// what changes in it would be painted over whatever stands in its place.
QtObject {
    id: root

    required property Item item

    property bool enabled: true
    property bool holds: true

    readonly property Flickable around: areaAround(item)

    function areaAround(under: Item): Flickable {
        for (let above = under.parent; above; above = above.parent) {
            if (above instanceof Flickable)
                return above;
        }
        return null;
    }

    function look(): bool {
        for (let area = around; area; area = areaAround(area)) {
            const place = item.mapToItem(area, 0, 0);
            if (place.y >= area.height || place.y + item.height <= 0 || place.x >= area.width
                || place.x + item.width <= 0)
                return false;
        }
        return true;
    }

    readonly property Connections frames: Connections {
        target: root.enabled && root.around ? root.item.Window.window : null

        // Before each frame, when everything has its place.
        function onAfterAnimating() { root.holds = root.look(); }
    }
}
