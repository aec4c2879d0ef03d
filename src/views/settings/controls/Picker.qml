import QtQuick
import QtQuick.Templates as T
import Varnhold

// A choice among values that unfolds as a menu.
T.ComboBox {
    id: root

    property var values: []
    property string current
    property string name
    property string help
    property bool swatches: false // the values are names of models' colours

    signal chosen(string value)

    implicitWidth: 120
    implicitHeight: Theme.fieldHeight
    leftPadding: Theme.loose + Theme.fine
    rightPadding: Theme.roomy + Theme.fine
    model: values
    currentIndex: values.indexOf(current)
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font: Theme.label
    opacity: enabled ? 1 : Theme.disabled
    Accessible.role: Accessible.ComboBox
    Accessible.name: root.name
    Accessible.description: root.displayText
    onActivated: index => {
        const value = values[index];
        // What is shown stays what the record says, whether or not it takes the choice.
        currentIndex = Qt.binding(() => root.values.indexOf(root.current));
        chosen(value);
    }

    contentItem: Item {
        Swatch {
            id: shown

            anchors.verticalCenter: parent.verticalCenter
            visible: root.swatches
            color: Theme.modelGround(root.displayText)
        }

        Label {
            x: shown.visible ? shown.width + Theme.gap : 0
            width: parent.width - x
            height: parent.height
            text: root.displayText
            font: root.font
            verticalAlignment: Text.AlignVCenter
            Accessible.ignored: true
        }
    }

    indicator: Symbol {
        x: root.width - width - 6
        y: (root.height - height) / 2
        name: "caret-down-bold"
        size: Theme.zoneSize
        color: Theme.secondaryText
    }

    background: Rectangle {
        radius: Theme.radius
        color: Theme.control
        border.color: Theme.fieldStroke

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.pressed : root.hovered ? Theme.hover : "transparent"
        }

        FocusRing { shown: root.visualFocus }
    }

    delegate: MenuRow {
        required property int index
        required property string modelData

        width: ListView.view.width
        text: modelData
        swatch: root.swatches ? Theme.modelGround(modelData) : "transparent"
        checked: index === root.currentIndex
        highlighted: index === root.highlightedIndex
    }

    popup: T.Popup {
        y: root.height + 3
        width: Math.max(root.width, 130)
        implicitHeight: Math.min(contentItem.implicitHeight + 8, 320)
        padding: Theme.tight
        margins: Theme.pad
        onVisibleChanged: visible ? Attention.menuOpened() : Attention.menuClosed()
        Component.onDestruction: if (visible) Attention.menuClosed()

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            Accessible.role: Accessible.List
            Accessible.name: root.name
        }

        background: Panel { radius: Theme.zoneRadius }
    }

    ToolTipArea { text: root.help }
}
