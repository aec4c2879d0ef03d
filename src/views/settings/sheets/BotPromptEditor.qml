import QtQuick
import Varnhold

// What one bot is told besides what all are told.
Sheet {
    id: root

    required property PromptEditorModel editor

    padding: Theme.ample
    Accessible.name: editor.heading
    Keys.onReturnPressed: editor.save()
    Keys.onEnterPressed: editor.save()
    onDismissed: editor.cancel()

    Item {
        id: body

        readonly property int spacing: 15

        width: 500 - 2 * root.padding
        height: 400 - 2 * root.padding

        EmojiLabel {
            id: heading

            width: parent.width - note.width - 12
            text: root.editor.heading
            font: Theme.headline
        }

        Label {
            id: note

            anchors.right: parent.right
            anchors.baseline: heading.baseline
            text: "bot-specific prompt"
            font: Theme.tiny
            color: Theme.secondaryText
        }

        Divider {
            id: line

            anchors.top: heading.bottom
            anchors.topMargin: body.spacing
            width: parent.width
        }

        TextArea {
            anchors.top: line.bottom
            anchors.bottom: buttons.top
            anchors.topMargin: body.spacing
            anchors.bottomMargin: body.spacing
            width: parent.width
            name: "bot-specific prompt"
            monospaced: true
            text: root.editor.text
            onEdited: words => root.editor.text = words
        }

        SheetButtons {
            id: buttons

            anchors.bottom: parent.bottom
            width: parent.width
            acceptText: "Save Prompt"
            onAccepted: root.editor.save()
            onCancelled: root.editor.cancel()
        }
    }
}
