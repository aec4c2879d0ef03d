import QtQuick
import Varnhold

// What the program is and how to begin, on a first run.
Sheet {
    id: root

    required property SheetsPart sheets

    padding: 0
    Accessible.name: "Welcome to Varnhold"
    Keys.onReturnPressed: sheets.dismissWelcome()
    Keys.onEnterPressed: sheets.dismissWelcome()
    Keys.onUpPressed: text.wheelArea.scrollBy(-40)
    Keys.onDownPressed: text.wheelArea.scrollBy(40)
    Keys.onPressed: event => {
        const page = {[Qt.Key_PageUp]: -1, [Qt.Key_PageDown]: 1}[event.key];
        if (page) {
            text.wheelArea.scrollBy(page * text.height * 0.9);
            event.accepted = true;
        }
    }
    onDismissed: sheets.dismissWelcome()

    Item {
        width: 560
        height: Math.max(300, Math.min(620, root.height - 32))

        Column {
            id: head

            y: 24
            width: parent.width
            spacing: Theme.tight

            EmojiLabel {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "⚖️"
                font: Theme.emblem
            }

            Label {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Welcome to Varnhold"
                font: Theme.title
            }

            Label {
                anchors.horizontalCenter: parent.horizontalCenter
                text: "Ostrelle LLC autonomous AI ecosystem"
                color: Theme.secondaryText
            }
        }

        Divider {
            id: upper

            y: head.y + head.height + 18
            width: parent.width
        }

        ScrollArea {
            id: text

            anchors.top: upper.bottom
            anchors.bottom: lower.top
            width: parent.width
            contentHeight: sections.height

            AlwaysVisibleScrollbar {}

            WelcomeText {
                id: sections

                x: 28
                width: text.width - 56
            }
        }

        Divider {
            id: lower

            y: foot.y - 14
            width: parent.width
        }

        TextButton {
            id: foot

            anchors.horizontalCenter: parent.horizontalCenter
            y: parent.height - height - 14
            width: 160
            height: 32
            prominent: true
            text: "Got it"
            onClicked: root.sheets.dismissWelcome()
        }

        // Behind the rest, so that the keyboard begins with the button that is wanted.
        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: Theme.pad + Theme.fine
            y: 10
            symbol: "x-circle-fill"
            size: Theme.largeSignSize
            help: "Close"
            onClicked: root.sheets.dismissWelcome()
        }
    }
}
