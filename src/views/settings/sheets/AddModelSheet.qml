import QtQuick
import Varnhold

// The form that adds a model to the library.
Sheet {
    id: root

    required property AddModelForm form

    Accessible.name: qsTr("Add Model to Library")
    Keys.onReturnPressed: form.add()
    Keys.onEnterPressed: form.add()
    onDismissed: form.cancel()

    Item {
        width: 380 - 2 * root.padding
        height: column.height

        Column {
            id: column

            width: parent.width
            spacing: 14

            Label {
                width: parent.width - 32
                text: qsTr("Add Model to Library")
                font: Theme.title3
            }

            Repeater {
                model: [
                    {label: qsTr("Model ID"), prompt: qsTr("e.g. claude-opus-4-8"), of: "modelId"},
                    {label: qsTr("Display Name"), prompt: qsTr("e.g. Claude Opus 4.8"), of: "modelName"},
                    {label: qsTr("Family / Group"), prompt: qsTr("e.g. Anthropic"), of: "modelFamily"}
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
                label: qsTr("Provider")

                Picker {
                    anchors.fill: parent
                    name: qsTr("Provider")
                    values: root.form.providers
                    current: root.form.provider
                    onChosen: value => root.form.provider = value
                }
            }

            LabeledRow {
                width: parent.width
                label: qsTr("Color")

                Picker {
                    anchors.fill: parent
                    name: qsTr("Color")
                    values: root.form.colors
                    current: root.form.color
                    onChosen: value => root.form.color = value
                }
            }

            SheetButtons {
                width: parent.width
                acceptText: qsTr("Add Model")
                acceptable: root.form.canAdd
                onAccepted: root.form.add()
                onCancelled: root.form.cancel()
            }
        }

        // Behind the fields, so that the keyboard begins with the first of them.
        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: -5
            y: -4
            symbol: "x-circle-fill"
            size: 16
            help: qsTr("Close")
            onClicked: root.form.cancel()
        }
    }
}
