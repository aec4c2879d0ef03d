import QtQuick
import Varnhold

// The secondary click of a text control: cut, copy, paste, select all.
Item {
    id: root

    required property var editor // a text item
    property bool secret: false

    anchors.fill: parent

    TapHandler {
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.WithinBounds
        onTapped: point => {
            menu.active = true;
            menu.item.openAt(root, point.position.x, point.position.y);
        }
    }

    Loader {
        id: menu

        active: false
        sourceComponent: ContextMenu {
            readonly property bool selected: root.editor.selectedText !== ""

            rows: [
                { title: "Cut", enabled: selected && !root.secret },
                { title: "Copy", enabled: selected && !root.secret },
                { title: "Paste", enabled: root.editor.canPaste },
                { kind: "divider" },
                { title: "Select All", enabled: root.editor.length > 0 }
            ]
            onTriggered: row => {
                const actions = ["cut", "copy", "paste", "", "selectAll"];
                root.editor.forceActiveFocus();
                root.editor[actions[row]]();
            }
        }
    }
}
