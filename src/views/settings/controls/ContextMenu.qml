import QtQuick
import QtQuick.Templates as T
import Varnhold

// A menu made of rows: { kind: "action" | "divider" | "section", title, symbol, destructive, checked }.
T.Menu {
    id: root

    property var rows: []

    signal triggered(int row)

    // At a place of the item's; afterwards the keyboard is in the menu.
    function openAt(item: Item, x: real, y: real) {
        const former = item.Window.activeFocusItem;
        returnTo = former;
        returnReason = former && former.visualFocus ? Qt.TabFocusReason : Qt.PopupFocusReason;
        parent = item;
        popup(item, x, y);
    }

    property Item returnTo: null // what has the focus again afterwards
    property int returnReason: Qt.PopupFocusReason
    property bool inside: false // the keyboard, when it closes

    readonly property bool checkColumn: rows.some(row => row.checked === true)

    padding: 4
    margins: 8
    modal: false
    focus: true
    implicitWidth: Math.max(140, list.widest + 8)
    implicitHeight: list.contentHeight + 8
    onAboutToHide: inside = activeFocus
    onClosed: if (inside && returnTo) returnTo.forceActiveFocus(returnReason)
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

    Repeater {
        model: root.rows
        onItemAdded: (index, item) => list.widest = Math.max(list.widest, item.implicitWidth)

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
