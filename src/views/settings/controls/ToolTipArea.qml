import QtQuick
import QtQuick.Templates as T
import Varnhold

// Lay it into any item to give that item a tool tip; it takes no presses and needs no place of its own.
Item {
    id: root

    property string text
    property bool suppressed: false // while something else says that nobody reads

    property point place // of the pointer when it had rested long enough
    property int actsBefore: 0 // when the pointer came: whoever has acted since doesn't read

    readonly property bool wanted: pointer.hovered && !root.suppressed && !Attention.menuOpen
        && Attention.acts === root.actsBefore

    readonly property bool shown: tip.active

    anchors.fill: parent

    HoverHandler {
        id: pointer

        enabled: root.text !== ""
        onHoveredChanged: root.actsBefore = Attention.acts
    }

    Timer {
        id: rest

        property bool shown: false

        interval: Theme.tipDelay
        running: root.wanted
        onRunningChanged: if (running) shown = false
        onTriggered: {
            root.place = pointer.point.position;
            shown = true;
        }
    }

    Item {
        id: spot

        x: root.place.x
        y: root.place.y
    }

    Loader {
        id: tip

        active: rest.shown && root.wanted && root.text !== ""
        sourceComponent: T.ToolTip {
            parent: spot
            x: 6
            y: 18 // below the pointer's sign; above it where there is no room
            margins: Theme.pad
            padding: Theme.gap
            leftPadding: Theme.pad
            rightPadding: Theme.pad
            visible: true
            delay: 0
            timeout: -1
            text: root.text
            closePolicy: T.Popup.NoAutoClose
            implicitWidth: Math.min(360, Math.ceil(oneLine.implicitWidth) + 1 + leftPadding + rightPadding)
            implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
            contentItem: Text {
                text: root.text
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                font: Theme.small
                color: Theme.text
                Accessible.ignored: true

                Text {
                    id: oneLine

                    visible: false
                    text: root.text
                    textFormat: Text.PlainText
                    font: Theme.small
                }
            }
            background: Panel { radius: Theme.radius }
        }
    }
}
