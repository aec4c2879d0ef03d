import QtQuick
import Varnhold

// One line of a form: a label in a column of its own, and a control that takes the rest.
Item {
    id: root

    property string label

    readonly property int labelWidth: 100

    default property alias content: holder.data

    implicitHeight: Theme.fieldHeight

    Label {
        anchors.verticalCenter: parent.verticalCenter
        width: root.labelWidth
        text: root.label
        font: Theme.label
        Accessible.ignored: true // the control has it for its name
    }

    Item {
        id: holder

        anchors.fill: parent
        anchors.leftMargin: root.labelWidth + Theme.pad
    }
}
