import QtQuick
import Varnhold

// One group in the sheet that manages them: its name to edit, and a button that deletes it.
Item {
    id: root

    required property string groupId
    required property string name

    signal renamed(string name)
    signal removed()

    implicitHeight: Theme.fieldHeight

    Field {
        width: parent.width - remover.width - 4
        name: "Group name"
        placeholder: "Group name"
        text: root.name
        onEdited: words => root.renamed(words)
    }

    IconButton {
        id: remover

        anchors.right: parent.right
        symbol: "trash"
        help: "Delete %1".arg(root.name)
        onClicked: root.removed()
    }
}
