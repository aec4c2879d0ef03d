import QtQuick
import QtQml
import QtQuick.Templates as T
import Varnhold

// A menu made of rows: { kind: "action" | "divider" | "section", title, symbol, destructive, checked }.
T.Menu {
    id: root

    property var rows: []

    signal triggered(int row)

    // At a place of the item's; afterwards the keyboard is in the menu.
    function openAt(item: Item, x: real, y: real) {
        parent = item;
        popup(item, x, y);
    }

    readonly property bool checkColumn: rows.some(row => row.checked === true)

    padding: 4
    margins: 8
    modal: false
    focus: true
    implicitWidth: Math.max(140, list.widest + 8)
    implicitHeight: list.contentHeight + 8
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    contentItem: ListView {
        id: list

        property real widest: 0

        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
    }

    background: Panel { radius: 8 }

    Instantiator {
        model: root.rows
        onObjectAdded: (index, object) => {
            root.insertItem(index, object);
            list.widest = Math.max(list.widest, object.implicitWidth);
        }
        onObjectRemoved: (index, object) => root.removeItem(object)

        MenuRow {
            required property int index
            required property var modelData

            width: ListView.view ? ListView.view.width : implicitWidth
            kind: modelData.kind ?? "action"
            text: modelData.title ?? ""
            symbol: modelData.symbol ?? ""
            destructive: modelData.destructive === true
            checked: modelData.checked === true
            checkColumn: root.checkColumn
            onTriggered: root.triggered(index)
        }
    }
}
