import QtQuick
import QtQuick.Templates as T
import Varnhold

// A menu made of rows: { kind: "action" | "divider" | "section" | "text", title, symbol, destructive,
// checked, enabled }.
T.Menu {
    id: root

    property var rows: []

    signal triggered(int row)

    // At a place of the item's; afterwards the keyboard is in the menu.
    function openAt(item: Item, x: real, y: real) {
        former.remember(item);
        list.widest = 0;
        shownRows = rows;
        parent = item;
        list.forceLayout();
        popup(item, x, y);
        list.forceLayout();
    }

    // What is chosen may change the rows; those on show stay until the menu is opened again.
    property var shownRows: []
    readonly property FormerFocus former: FormerFocus {}
    readonly property bool signColumn: shownRows.some(row => row.checked === true || row.symbol)

    padding: Theme.tight
    margins: Theme.pad
    modal: false
    focus: true
    implicitWidth: Math.max(140, list.widest + 8)
    implicitHeight: list.contentHeight + 8
    onClosed: former.giveBack()
    onVisibleChanged: visible ? Attention.menuOpened() : Attention.menuClosed()
    Component.onDestruction: if (visible) Attention.menuClosed()
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    contentItem: ListView {
        id: list

        property real widest: 0

        implicitHeight: contentHeight
        model: root.contentModel
        interactive: false
        currentIndex: root.currentIndex
    }

    background: Panel { radius: Theme.zoneRadius }

    Repeater {
        model: root.shownRows
        onItemAdded: (index, item) => list.widest = Math.max(list.widest, item.implicitWidth)

        MenuRow {
            required property int index
            required property var modelData

            width: ListView.view ? ListView.view.width : implicitWidth
            kind: modelData.kind ?? "action"
            text: modelData.title ?? ""
            symbol: modelData.symbol ?? ""
            destructive: modelData.destructive === true
            enabled: kind === "action" && modelData.enabled !== false
            opacity: kind === "action" && !enabled ? Theme.disabled : 1
            checked: modelData.checked === true
            signColumn: root.signColumn
            onTriggered: {
                // Before the action, which may want the keyboard for itself.
                root.former.giveBack();
                root.triggered(index);
            }
        }
    }
}
