import QtQuick
import QtQuick.Templates as T
import Varnhold

// A choice among a few values side by side; the arrow keys choose the neighbour.
Item {
    id: root

    property var values: []
    property string current
    property string name
    property real size: 11 // of the words

    signal chosen(string value)

    readonly property int currentIndex: values.indexOf(current)

    function goTo(index: int) {
        if (index >= 0 && index < values.length) {
            segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
            chosen(values[index]);
        }
    }

    implicitWidth: 4 + values.length * Math.ceil(widest.width + 20)
    implicitHeight: Theme.fieldHeight
    opacity: enabled ? 1 : 0.3
    Accessible.role: Accessible.Grouping
    Accessible.name: root.name

    // Equal shares where the longest value fits into one, or else to each what its value needs.
    readonly property bool even: (width - 4) / Math.max(1, values.length) >= widest.width + 12
    readonly property real needed: values.reduce((sum, value) => sum + need(value), 0)

    function need(value: string): real {
        return metrics.advanceWidth(value) + 12;
    }

    function share(index: int): real {
        const whole = width - 4;
        return even ? whole / values.length : whole * need(values[index]) / needed;
    }

    function start(index: int): real {
        let x = 2;
        for (let i = 0; i < index; ++i)
            x += share(i);
        return x;
    }

    FontMetrics {
        id: metrics

        font: widest.font
    }

    TextMetrics {
        id: widest

        font: Theme.font(root.size, Font.DemiBold)
        text: root.values.reduce((a, b) => b.length > a.length ? b : a, "")
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.trough

        Rectangle {
            x: root.start(Math.max(0, root.currentIndex))
            y: 2
            visible: root.currentIndex >= 0
            width: visible ? root.share(root.currentIndex) : 0
            height: parent.height - 4
            radius: Theme.radius - 1
            color: Theme.control
            border.color: Theme.separator

            Behavior on x { NumberAnimation { duration: Theme.quick; easing.type: Easing.OutCubic } }
        }
    }

    Row {
        anchors.fill: parent
        anchors.margins: 2

        Repeater {
            id: segments

            model: root.values

            T.RadioButton {
                id: segment

                required property int index
                required property string modelData

                readonly property bool chosen: index === root.currentIndex

                width: root.share(index)
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
