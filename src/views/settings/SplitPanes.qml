import QtQuick
import Varnhold

// Two panes side by side and a divider between them, moved by the pointer or, once it has the focus,
// by the arrow keys. All that the window gains in width goes to the right pane.
Item {
    id: root

    property alias leftContent: leftPane.data
    property alias rightContent: rightPane.data
    property real leftWidth: idealWidth

    readonly property real leastWidth: 260
    readonly property real idealWidth: 280
    readonly property real mostWidth: 320
    readonly property real leastRightWidth: 500

    function moveTo(wanted: real) {
        leftWidth = Math.max(leastWidth, Math.min(mostWidth, Math.round(wanted)));
    }

    implicitWidth: idealWidth + divider.width + leastRightWidth

    Item {
        id: leftPane

        objectName: "leftPane"
        width: root.leftWidth
        height: root.height
    }

    Item {
        id: rightPane

        objectName: "rightPane"
        x: root.leftWidth + divider.width
        width: Math.max(root.leastRightWidth, root.width - x)
        height: root.height
    }

    Divider {
        id: divider

        x: root.leftWidth
        width: 1
        height: root.height
        vertical: true
    }

    // Wider than the line, so that it can be caught.
    Item {
        id: grip

        readonly property int step: 10
        // What a slider tells those who can't see it.
        readonly property real value: root.leftWidth
        readonly property real minimumValue: root.leastWidth
        readonly property real maximumValue: root.mostWidth
        readonly property real stepSize: step

        x: divider.x - 4
        width: 9
        height: root.height
        activeFocusOnTab: true
        Accessible.role: Accessible.Slider
        Accessible.name: "Width of the left pane"
        Accessible.onIncreaseAction: root.moveTo(root.leftWidth + grip.step)
        Accessible.onDecreaseAction: root.moveTo(root.leftWidth - grip.step)
        Keys.onLeftPressed: root.moveTo(root.leftWidth - grip.step)
        Keys.onRightPressed: root.moveTo(root.leftWidth + grip.step)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                root.moveTo(event.key === Qt.Key_Home ? root.leastWidth : root.mostWidth);
                event.accepted = true;
            }
        }

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 3
            height: parent.height
            color: Theme.focusRing
            opacity: grip.activeFocus ? 1 : mover.pressed ? 0.8 : mover.containsMouse ? 0.4 : 0

            Behavior on opacity { NumberAnimation { duration: Theme.quick } }
        }

        MouseArea {
            id: mover

            property real caughtAt

            anchors.fill: parent
            hoverEnabled: true
            preventStealing: true
            cursorShape: Qt.SplitHCursor
            onPressed: mouse => caughtAt = mouse.x
            onPositionChanged: mouse => {
                if (pressed)
                    root.moveTo(root.leftWidth + mouse.x - caughtAt);
            }
            onDoubleClicked: root.moveTo(root.idealWidth)
        }
    }
}
