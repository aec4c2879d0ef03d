import QtQuick
import Varnhold

// The form that adds a model to the library.
Sheet {
    id: root

    required property AddModelForm form

    // An open menu has the key first.
    function accept(event: KeyEvent, menu: var) {
        event.accepted = !menu.visible;
        if (event.accepted)
            form.add();
    }

    Accessible.name: "Add Model to Library"
    Keys.onReturnPressed: form.add()
    Keys.onEnterPressed: form.add()
    onDismissed: form.cancel()

    Item {
        width: 380 - 2 * root.padding
        height: column.height

        Column {
            id: column

            width: parent.width
            spacing: Theme.broad

            Label {
                width: parent.width - 32
                text: "Add Model to Library"
                font: Theme.title3
            }

            Repeater {
                model: [
                    {label: "Model ID", prompt: "e.g. claude-opus-4-8", of: "modelId"},
                    {label: "Display Name", prompt: "e.g. Claude Opus 4.8", of: "modelName"},
                    {label: "Family / Group", prompt: "e.g. Anthropic", of: "modelFamily"}
                ]

                LabeledRow {
                    id: line

                    required property var modelData

                    width: parent.width
                    label: modelData.label

                    Field {
                        anchors.fill: parent
                        name: line.modelData.label
                        placeholder: line.modelData.prompt
                        text: root.form[line.modelData.of]
                        onEdited: words => root.form[line.modelData.of] = words
                    }
                }
            }

            LabeledRow {
                width: parent.width
                label: "Provider"

                Picker {
                    anchors.fill: parent
                    name: "Provider"
                    Keys.onReturnPressed: event => root.accept(event, popup)
                    Keys.onEnterPressed: event => root.accept(event, popup)
                    values: root.form.providers
                    current: root.form.provider
                    onChosen: value => root.form.provider = value
                }
            }

            LabeledRow {
                width: parent.width
                label: "Color"

                Picker {
                    anchors.fill: parent
                    name: "Color"
                    swatches: true
                    Keys.onReturnPressed: event => root.accept(event, popup)
                    Keys.onEnterPressed: event => root.accept(event, popup)
                    values: root.form.colors
                    current: root.form.color
                    onChosen: value => root.form.color = value
                }
            }

            SheetButtons {
                width: parent.width
                acceptText: "Add Model"
                acceptable: root.form.canAdd
                onAccepted: root.form.add()
                onCancelled: root.form.cancel()
            }
        }

        // Behind the fields, so that the keyboard begins with the first of them.
        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: -Theme.close
            y: -4
            symbol: "x-circle-fill"
            size: Theme.signSize
            help: "Close"
            onClicked: root.form.cancel()
        }
    }
}
