import QtQuick
import Varnhold

// What stands over the page: a word that all is saved, and above it one sheet or alert at a time.
Item {
    id: root

    objectName: "overlays"

    required property SheetsPart sheets

    readonly property bool settled: !coming.running && !going.running // nothing is on its way

    readonly property var kinds: ({
        alert: alert, promptEditor: promptEditor, tokenSheet: tokenSheet, welcome: welcome,
        addModel: addModel, libraryTip: libraryTip, manageGroups: manageGroups, about: about
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

    // What goes fades as it came.
    PartingPicture {
        id: former

        anchors.fill: parent

        NumberAnimation {
            id: going

            target: former
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.quick
            onFinished: former.drop()
        }
    }

    readonly property int partings: sheets.partings
    onPartingsChanged: {
        former.take();
        going.restart();
    }

    Component { id: about; AboutSheet { sheets: root.sheets } }
    Component { id: alert; Alert { sheets: root.sheets } }
    Component { id: promptEditor; BotPromptEditor { editor: root.sheets.prompt } }
    Component { id: tokenSheet; BotTokenSheet { form: root.sheets.token } }
    Component { id: welcome; WelcomeSheet { sheets: root.sheets } }
    Component { id: addModel; AddModelSheet { form: root.sheets.addModel } }
    Component { id: libraryTip; LibraryTipSheet { sheets: root.sheets } }
    Component { id: manageGroups; ManageGroupsSheet { form: root.sheets.manageGroups } }
}
