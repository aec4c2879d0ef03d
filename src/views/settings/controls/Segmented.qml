import QtQuick
import QtQuick.Templates as T
import Varnhold

// A choice among a few values side by side; the arrow keys choose the neighbour.
Item {
    id: root

    property var values: []
    property string current
    property string name
    property real size: Theme.smallSize // of the words

    signal chosen(string value)

    readonly property int currentIndex: values.indexOf(current)
    property bool settled: false // what is only being made doesn't slide into its place

    Timer {
        interval: 0
        running: true
        onTriggered: root.settled = true
    }

    function goTo(index: int) {
        if (index >= 0 && index < values.length) {
            segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
            chosen(values[index]);
        }
    }

    // As wide as each other, unless the longest word then has no room.
    readonly property var wordWidths: values.map(value => Math.ceil(words.advanceWidth(value)))
    readonly property real evenWidth: (width - 4) / Math.max(1, values.length)
    readonly property bool even: Math.max(...wordWidths) + 6 <= evenWidth
    readonly property real slack: evenWidth - wordWidths.reduce((a, b) => a + b, 0) / Math.max(1, values.length)

    function widthOf(index: int): real {
        return even ? evenWidth : wordWidths[index] + slack;
    }

    function startOf(index: int): real {
        return even ? index * evenWidth
            : wordWidths.slice(0, index).reduce((a, b) => a + b, 0) + index * slack;
    }

    implicitWidth: 4 + values.length * (Math.max(0, ...wordWidths) + 20)
    implicitHeight: Theme.fieldHeight
    opacity: enabled ? 1 : Theme.disabled
    Accessible.role: Accessible.Grouping
    Accessible.name: root.name

    FontMetrics {
        id: words

        font: Theme.font(root.size, Font.DemiBold)
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.trough
        border.width: Theme.edgeWidth
        border.color: Theme.separator

        Rectangle {
            x: 2 + root.startOf(Math.max(0, root.currentIndex))
            y: 2
            visible: root.currentIndex >= 0
            width: root.widthOf(Math.max(0, root.currentIndex))
            height: parent.height - 4
            radius: Theme.radius - 1
            color: Theme.control
            border.color: Theme.separator

            Behavior on x {
                enabled: root.settled
                NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic }
            }
        }
    }

    Row {
        anchors.fill: parent
        anchors.margins: Theme.fine

        Repeater {
            id: segments

            model: root.values

            T.RadioButton {
                id: segment

                required property int index
                required property string modelData

                readonly property bool chosen: index === root.currentIndex

                width: root.widthOf(index)
                height: root.height - 4
                text: modelData
                hoverEnabled: true
                focusPolicy: chosen || (root.currentIndex < 0 && index === 0) ? Qt.TabFocus : Qt.NoFocus
                autoExclusive: false
                checked: chosen
                Accessible.name: text
                Keys.onLeftPressed: root.goTo(index - 1)
                Keys.onRightPressed: root.goTo(index + 1)
                onClicked: {
                    // What is shown stays what the record says, whether or not it takes the choice.
                    checked = Qt.binding(() => segment.chosen);
                    if (!chosen)
                        root.chosen(modelData);
                }

                contentItem: Label {
                    text: segment.text
                    font: Theme.font(root.size, segment.chosen ? Font.DemiBold : Font.Normal)
                    color: Theme.text
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                    Accessible.ignored: true
                }

                background: Rectangle {
                    radius: Theme.radius - 1
                    color: segment.hovered && !segment.chosen ? Theme.hover : "transparent"

                    FocusRing { shown: segment.visualFocus }
                }
            }
        }
    }
}
