import QtQuick
import Varnhold

// The left pane and the top of the right one, as they stand in the window, and beneath them a place
// that takes what can be dragged out of them and a row such as chains have.
Item {
    id: root

    required property SettingsModel settings
    property int paneWidth: 280
    property var taken: []

    anchors.fill: parent

    LeftPane {
        width: root.paneWidth
        height: parent.height
        settings: root.settings
    }

    TopBlock {
        x: root.paneWidth
        width: parent.width - x
        height: 420
        settings: root.settings
    }

    DropZone {
        x: root.paneWidth + 20
        y: 440
        width: 200
        height: 100
        kinds: ["bot", "model"]
        name: "Elsewhere"
        onTextDropped: text => root.taken = root.taken.concat(text)
    }

    DragSource {
        x: root.paneWidth + 20
        y: 560
        width: 200
        height: 30
        payload: "in-chain"
        kind: "model"
        name: "Row of a chain"
    }
}
