import QtQuick
import Varnhold

// A value between two arrows, one step at a time; the left and right arrow keys do the same.
FocusItem {
    id: root

    property string label
    property string valueText
    property bool inactive: false
    property real valueWidth: 36
    property bool canGoLeft: true
    property bool canGoRight: true
    property string help
    // At least; steppers under each other line up.
    property real labelWidth: 0
    property real valueColumn: 0

    readonly property real labelImplicitWidth: caption.implicitWidth

    signal goneLeft()
    signal goneRight()

    implicitWidth: row.implicitWidth
    implicitHeight: 20
    Accessible.role: Accessible.SpinBox
    Accessible.name: root.label
    Accessible.description: root.valueText
    Accessible.onIncreaseAction: if (root.canGoRight) root.goneRight()
    Accessible.onDecreaseAction: if (root.canGoLeft) root.goneLeft()
    Keys.onLeftPressed: if (root.canGoLeft) root.goneLeft()
    Keys.onRightPressed: if (root.canGoRight) root.goneRight()

    Row {
        id: row

        height: parent.height
        spacing: Theme.fine

        Label {
            id: caption

            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(implicitWidth, root.labelWidth)
            rightPadding: Theme.tight
            text: root.label
            font: Theme.smallMedium
            color: Theme.secondaryText
            Accessible.ignored: true
        }

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "caret-left-bold"
            size: Theme.tinySize
            enabled: root.canGoLeft
            focusPolicy: Qt.NoFocus
            Accessible.name: "Less %1".arg(root.label)
            onClicked: root.goneLeft()
        }

        Item {
            width: Math.max(root.valueWidth, root.valueColumn)
            height: parent.height

            Label {
                anchors.centerIn: parent
                width: root.valueWidth
                horizontalAlignment: Text.AlignHCenter
                text: root.valueText
                font: Theme.smallStrong
                color: root.inactive ? Theme.secondaryText : Theme.blue
                Accessible.ignored: true
            }
        }

        IconButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "caret-right-bold"
            size: Theme.tinySize
            enabled: root.canGoRight
            focusPolicy: Qt.NoFocus
            Accessible.name: "More %1".arg(root.label)
            onClicked: root.goneRight()
        }
    }

    FocusRing { shown: root.visualFocus }

    ToolTipArea { text: root.help }
}
