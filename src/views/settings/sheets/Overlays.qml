import QtQuick
import Varnhold

// What stands over the page: a word that all is saved, and above it one sheet or alert at a time.
Item {
    id: root

    objectName: "overlays"

    required property SheetsPart sheets

    readonly property bool settled: !coming.running // nothing is on its way in

    readonly property var kinds: ({
        alert: alert, promptEditor: promptEditor, tokenSheet: tokenSheet, welcome: welcome,
        addModel: addModel, libraryTip: libraryTip, manageGroups: manageGroups
    })

    Toast {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.vast
        text: "Preferences Saved"
        shown: root.sheets.toastShown
    }

    // Nothing can be dropped on a page that waits for an answer.
    DropArea {
        anchors.fill: parent
        enabled: root.sheets.standing !== ""
        onDropped: drop => drop.accept(Qt.IgnoreAction)
    }

    Loader {
        id: place

        anchors.fill: parent
        sourceComponent: root.kinds[root.sheets.standing] ?? null
        onLoaded: coming.restart()

        NumberAnimation {
            id: coming

            target: place
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.quick
        }
    }

    Component { id: alert; Alert { sheets: root.sheets } }
    Component { id: promptEditor; BotPromptEditor { editor: root.sheets.prompt } }
    Component { id: tokenSheet; BotTokenSheet { form: root.sheets.token } }
    Component { id: welcome; WelcomeSheet { sheets: root.sheets } }
    Component { id: addModel; AddModelSheet { form: root.sheets.addModel } }
    Component { id: libraryTip; LibraryTipSheet { sheets: root.sheets } }
    Component { id: manageGroups; ManageGroupsSheet { form: root.sheets.manageGroups } }
}
