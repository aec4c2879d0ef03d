import QtQuick
import Varnhold

// What the library is there for, on a first run.
Sheet {
    id: root

    required property SheetsPart sheets

    Accessible.name: "Welcome to the Model Library"
    Keys.onReturnPressed: sheets.dismissLibraryTip()
    Keys.onEnterPressed: sheets.dismissLibraryTip()
    onDismissed: sheets.dismissLibraryTip()

    Column {
        width: 420 - 2 * root.padding
        spacing: Theme.ample * 2
        topPadding: Theme.pad

        Column {
            width: parent.width
            spacing: Theme.wide

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                name: Theme.symbol("books.vertical.fill")
                size: Theme.emblemSize
                color: Theme.blue
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "Welcome to the Model Library"
                font: Theme.title
            }

            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "Before you can assign AI models to your chains, you need to add the models you have access to."
                textFormat: Text.PlainText
                wrapMode: Text.Wrap
                font: Theme.body
                color: Theme.secondaryText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Column {
            width: parent.width
            spacing: Theme.broad

            Repeater {
                model: [
                    {sign: "plus.circle.fill", text: "Tap the \"+\" button in the Library panel header to add a model"},
                    {sign: "creditcard.fill", text: "Add models you subscribe to (e.g. Claude, GPT-4, Gemini)"},
                    {sign: "key.fill", text: "Add models you have API keys for via Providers"}
                ]

                Row {
                    id: line

                    required property var modelData

                    width: parent.width
                    spacing: Theme.wide

                    Symbol {
                        anchors.verticalCenter: parent.verticalCenter
                        name: Theme.symbol(line.modelData.sign)
                        size: Theme.largeSignSize
                        color: Theme.blue
                    }

                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        width: parent.width - 34
                        text: line.modelData.text
                        textFormat: Text.PlainText
                        wrapMode: Text.Wrap
                        font: Theme.body
                        color: Theme.text
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
        }

        TextButton {
            width: parent.width
            height: 32
            prominent: true
            text: "Got it — let me add models"
            onClicked: root.sheets.dismissLibraryTip()
        }
    }
}
