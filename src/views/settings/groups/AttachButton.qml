import QtQuick
import Varnhold

// Attaches files or a folder, by a dialog or by dropping them here.
TextButton {
    id: root

    required property GroupPart group

    text: "Attach File / Folder"
    symbol: "paperclip"
    size: Theme.smallSize
    Accessible.role: Accessible.ButtonMenu
    onClicked: choice.openAt(root, 0, height + 2)

    ContextMenu {
        id: choice

        rows: [
            { kind: "action", title: "Files…", symbol: Theme.symbol("doc.fill") },
            { kind: "action", title: "Folder…", symbol: Theme.symbol("folder.fill") }
        ]
        onTriggered: row => row === 0 ? root.group.attachFiles() : root.group.attachFolder()
    }

    DropArea {
        id: files

        anchors.fill: parent
        onEntered: drag => drag.accepted = drag.hasUrls
        onDropped: drop => {
            drop.acceptProposedAction();
            root.group.attachUrls(drop.urls);
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: files.containsDrag
        radius: Theme.radius
        color: Theme.faded(Theme.blue, 0.12)
        border.color: Theme.blue
        border.width: 1
    }
}
