import QtQuick
import QtQuick.Templates as T
import Varnhold

// Lines of text to type, with a scroll bar; edited tells only of what the user types.
Item {
    id: root

    property string text
    property string name
    property string placeholder
    property real fontSize: Theme.labelSize
    property bool monospaced: false

    signal edited(string text)

    readonly property alias editor: editor

    implicitWidth: 240
    implicitHeight: 80
    opacity: enabled ? 1 : Theme.disabled
    Accessible.ignored: true
    onTextChanged: if (!editor.filling) editor.take(text)

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.fieldBackground
        border.width: editor.activeFocus ? Theme.ringWidth : 1
        border.color: editor.activeFocus ? Theme.focusRing : Theme.editorStroke
    }

    ScrollArea {
        anchors.fill: parent
        anchors.margins: Theme.fine
        contentHeight: Math.max(height, editor.implicitHeight)

        T.TextArea.flickable: T.TextArea {
            id: editor

            property bool filling: true

            // From outside: what it holds already is left alone, so that the cursor stays.
            function take(words: string) {
                if (words === keeper.text)
                    return;
                const place = cursorPosition;
                filling = true;
                text = words;
                keeper.take(words);
                cursorPosition = Math.min(place, length);
                filling = false;
            }

            padding: Theme.tight
            leftPadding: Theme.gap
            rightPadding: Theme.wide
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            font.family: root.monospaced ? Theme.monospace : Theme.body.family
            font.pixelSize: root.fontSize
            color: Theme.text
            selectionColor: Theme.accent
            selectedTextColor: Theme.accentText
            selectByMouse: true
            Accessible.role: Accessible.EditableText
            Accessible.name: root.name
            Component.onCompleted: {
                text = root.text;
                keeper.take(root.text);
                filling = false;
            }
            onTextChanged: {
                if (!filling) {
                    keeper.follow();
                    root.edited(keeper.text);
                }
            }
            // The end of a line is the same with Shift.
            Keys.onPressed: event => {
                if (event.matches(StandardKey.InsertLineSeparator)) {
                    remove(selectionStart, selectionEnd);
                    insert(cursorPosition, "\n");
                    event.accepted = true;
                }
            }
            // Tab goes on to the next control, as everywhere else in the window.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

            TextKeeper {
                id: keeper

                document: editor.textDocument
            }

            EditMenu { editor: editor }

            Text {
                x: editor.leftPadding
                y: editor.topPadding
                width: editor.width - editor.leftPadding - editor.rightPadding
                visible: editor.length === 0 && editor.preeditText === ""
                text: root.placeholder
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                font: editor.font
                color: Theme.secondaryText
                Accessible.ignored: true
            }
        }
    }
}
