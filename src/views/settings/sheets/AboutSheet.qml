import QtQuick
import Varnhold

// What the program is.
Sheet {
    id: root

    required property SheetsPart sheets

    Accessible.name: "About Varnhold"
    Keys.onReturnPressed: sheets.dismissAbout()
    Keys.onEnterPressed: sheets.dismissAbout()
    onDismissed: sheets.dismissAbout()

    Column {
        width: 280
        spacing: Theme.ample

        ApplicationSign { anchors.horizontalCenter: parent.horizontalCenter }

        Column {
            width: parent.width
            spacing: Theme.tight

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "Varnhold"
                font: Theme.title
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "Version %1".arg(root.sheets.version)
                font: Theme.label
                color: Theme.secondaryText
            }
        }

        Column {
            width: parent.width
            spacing: Theme.tight

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "A supervisor for a fleet of AI chat bots."
                font: Theme.label
            }

            Label {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                text: "MIT licence"
                font: Theme.label
                color: Theme.secondaryText
            }
        }

        TextButton {
            width: parent.width
            height: 28
            prominent: true
            text: "OK"
            onClicked: root.sheets.dismissAbout()
        }
    }
}
