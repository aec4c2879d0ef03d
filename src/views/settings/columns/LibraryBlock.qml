import QtQuick
import Varnhold

// The library: models to drag into chains. What is dragged out of a chain and dropped here leaves it.
Item {
    id: root

    required property LibraryPart library
    required property bool showHints

    readonly property int headingHeight: 26

    implicitWidth: 260
    implicitHeight: 300

    Label {
        id: title

        height: root.headingHeight
        verticalAlignment: Text.AlignVCenter
        text: "Library"
        font: Theme.blockTitle
        Accessible.role: Accessible.Heading
    }

    IconButton {
        id: add

        anchors.right: parent.right
        y: (root.headingHeight - height) / 2
        symbol: Theme.symbol("plus")
        size: Theme.bodySize
        color: Theme.text
        help: "Add a model to the library"
        onClicked: root.library.showAddModel()
    }

    Hint {
        id: hint

        y: root.headingHeight
        width: parent.width
        visible: root.showHints
        text: "All available AI models from your connected providers — drag them into chains"
    }

    DropZone {
        id: zone

        anchors.fill: parent
        anchors.topMargin: (hint.visible ? hint.y + hint.height + 4 : root.headingHeight)
        anchors.leftMargin: -Theme.tight
        anchors.rightMargin: -Theme.gutter
        kinds: ["model"]
        name: "Library"
        onHoveredChanged: root.library.isTargeted = hovered
        useful: root.library.takes(DragSession.payload)
        onTextDropped: text => root.library.drop(text)

        Rectangle {
            anchors.fill: parent
            anchors.rightMargin: Theme.gutter - Theme.tight
            radius: Theme.radius
            color: root.library.isTargeted ? Theme.faded(Theme.blue, 0.1) : "transparent"
        }

        RowList {
            id: rows

            anchors.fill: parent
            topMargin: Theme.fine
            bottomMargin: Theme.tight
            name: "Library"
            model: root.library.rows
            section.property: "section"
            section.delegate: LibraryHeading {
                width: rows.room - Theme.tight
                library: root.library
            }
            delegate: LibraryRow {
                x: Theme.tight
                width: rows.room - Theme.tight
                library: root.library
                list: rows
            }
        }
    }
}
