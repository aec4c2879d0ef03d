import QtQuick
import Varnhold

// A message that has to be read. What it says is data, so it is shown as it stands.
Sheet {
    id: root

    required property SheetsPart sheets

    Accessible.role: Accessible.AlertMessage
    Accessible.name: "Alert"
    Accessible.description: sheets.alertText
    Keys.onReturnPressed: sheets.dismissAlert()
    Keys.onEnterPressed: sheets.dismissAlert()
    onDismissed: sheets.dismissAlert()

    Column {
        width: 280
        spacing: Theme.ample

        Column {
            width: parent.width
            spacing: Theme.pad

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "Alert"
                font: Theme.title3
            }

            ScrollArea {
                id: area

                width: parent.width + Theme.gutter
                height: Math.min(message.height, 320)

                AlwaysVisibleScrollbar {}

                Text {
                    id: message

                    width: area.room
                    horizontalAlignment: Text.AlignHCenter
                    text: root.sheets.alertText
                    textFormat: Text.PlainText
                    wrapMode: Text.Wrap
                    font: Theme.label
                    color: Theme.text
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
        }

        TextButton {
            width: parent.width
            height: 28
            prominent: true
            text: "OK"
            onClicked: root.sheets.dismissAlert()
        }
    }
}
