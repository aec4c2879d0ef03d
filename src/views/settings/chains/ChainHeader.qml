import QtQuick
import Varnhold

// What stands over a chain's zones: its title with the dot of its cache, its hint and its steppers.
//
// The menu of the title opens by the secondary button, and by the menu key or Shift+F10.
Column {
    id: root

    required property ChainPart chain
    required property bool showHints

    spacing: Theme.gap

    FocusItem {
        id: titleRow

        function openMenu(x: real, y: real) {
            menu.openAt(titleRow, x, y);
        }

        width: parent.width
        implicitHeight: title.implicitHeight
        Accessible.role: Accessible.Heading
        Accessible.name: root.chain.title
        Accessible.description: "Has a menu that tells how to add models"
        Accessible.onPressAction: openMenu(0, height)
        Keys.onMenuPressed: openMenu(0, height)
        Keys.onPressed: event => {
            if (event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier) {
                openMenu(0, height);
                event.accepted = true;
            }
        }

        TapHandler {
            acceptedButtons: Qt.RightButton
            onTapped: point => titleRow.openMenu(point.position.x, point.position.y)
        }

        FocusRing {
            anchors.margins: -Theme.tight // the row begins where its letters do
            shown: titleRow.visualFocus
        }

        EmojiLabel {
            id: title

            width: Math.min(implicitWidth, titleRow.width - dot.width - Theme.gap)
            text: root.chain.title
            font: Theme.headline
            Accessible.ignored: true
        }

        StatusDot {
            id: dot

            anchors.left: title.right
            anchors.leftMargin: Theme.gap
            anchors.verticalCenter: title.verticalCenter
            visible: root.chain.dotColor !== ""
            size: Theme.dot
            color: Theme[root.chain.dotColor] ?? Theme.gray
            help: root.chain.dotHelp

            // Only one tool tip at a time, where the whole section has one too.
            HoverHandler { blocking: true }
        }

        ContextMenu {
            id: menu

            rows: Array.from(root.chain.menuLines).map((line, index) => ({
                kind: index === 0 ? "section" : "text", title: line
            }))
        }
    }

    Hint {
        width: parent.width
        visible: root.showHints && root.chain.hint !== ""
        text: root.chain.hint
    }

    Row {
        visible: root.chain.responseValues.length > 0
        spacing: Theme.gap

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: "Response:"
            font: Theme.small
            color: Theme.secondaryText
        }

        Segmented {
            width: Math.min(implicitWidth, 220, root.width - x)
            values: root.chain.responseValues
            current: root.chain.response
            name: "Response"
            onChosen: value => root.chain.chooseResponse(value)
        }
    }

    StackSteppers {
        stack: root.chain
        showEffort: root.chain.showEffort
        contextHelp: root.chain.contextHelp
    }
}
