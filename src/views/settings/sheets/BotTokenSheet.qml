import QtQuick
import Varnhold

// A bot's token and the service it speaks to.
Sheet {
    id: root

    required property TokenSheetModel form

    padding: Theme.ample
    firstFocus: token
    Accessible.name: form.heading
    Keys.onReturnPressed: form.save()
    Keys.onEnterPressed: form.save()
    onDismissed: form.cancel()

    Column {
        width: 480 - 2 * root.padding
        spacing: Theme.wide

        Item {
            width: parent.width
            height: service.height

            EmojiLabel {
                anchors.verticalCenter: parent.verticalCenter
                width: caption.x - Theme.edge
                text: root.form.heading
                font: Theme.headline
            }

            Label {
                id: caption

                anchors.right: service.left
                anchors.rightMargin: Theme.pad
                anchors.verticalCenter: parent.verticalCenter
                text: "Service"
                font: Theme.label
                Accessible.ignored: true // the picker has it for its name
            }

            Segmented {
                id: service

                anchors.right: parent.right
                width: 180
                name: "Service"
                values: root.form.services
                current: root.form.service
                onChosen: value => root.form.service = value
            }
        }

        Divider { width: parent.width }

        Label {
            text: root.form.tokenLabel
            font: Theme.labelStrong
        }

        Field {
            id: token

            width: parent.width
            name: root.form.tokenLabel
            placeholder: root.form.tokenPrompt
            monospaced: true
            text: root.form.token
            onEdited: words => root.form.token = words
        }

        // As high as the longer of the two, so that the sheet stays where it is.
        Item {
            width: parent.width
            height: 2 * Math.ceil(line.lineSpacing) + Theme.fine

            FontMetrics {
                id: line

                font: help.font
            }

            Hint {
                id: help

                width: parent.width
                text: root.form.help
            }
        }

        SheetButtons {
            width: parent.width
            acceptText: "Save"
            acceptable: root.form.canSave
            onAccepted: root.form.save()
            onCancelled: root.form.cancel()
        }
    }
}
