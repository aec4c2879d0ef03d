import QtQuick
import QtQuick.Templates as T
import Varnhold

// Lay it into any item to give that item a tool tip; it takes no presses and needs no place of its own.
Item {
    id: root

    property string text
    property bool suppressed: false // while a press or a menu says that nobody reads
    property bool atPointer: false // for large items, whose edge may be far from where one looks

    readonly property bool shown: tip.active

    anchors.fill: parent

    HoverHandler {
        id: pointer

        enabled: root.text !== ""
        onHoveredChanged: if (!hovered) delay.shown = false
    }

    Timer {
        id: delay

        property bool shown: false
        property point place

        interval: Theme.tipDelay
        running: pointer.hovered && !root.suppressed
        onTriggered: {
            place = pointer.point.position;
            shown = true;
        }
    }

    Loader {
        id: tip

        active: delay.shown && pointer.hovered && root.text !== "" && !root.suppressed
        sourceComponent: T.ToolTip {
            parent: root
            x: root.atPointer ? delay.place.x : Math.min(8, root.width / 2)
            y: root.atPointer ? delay.place.y + 20 : root.height + 6
            margins: 8
            padding: 6
            leftPadding: 8
            rightPadding: 8
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
                font: Theme.font(11, Font.Normal)
                color: Theme.text
                Accessible.ignored: true

                Text {
                    id: oneLine

                    visible: false
                    text: root.text
                    textFormat: Text.PlainText
                    font: Theme.font(11, Font.Normal)
                }
            }
            background: Panel { radius: Theme.radius }
        }
    }
}
