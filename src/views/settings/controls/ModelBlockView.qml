import QtQuick
import Varnhold

// One model, as it stands in the library, in a chain or in a group.
Item {
    id: root

    property string name
    property string tag
    property string ground // a colour's name
    property bool isDragging: false
    property bool fading: false // what was dragged comes back gently
    property bool isDownloading: false
    property bool deletable: false
    property bool reachable: true // by Tab, where there is something to press
    property bool focused: false // the keyboard is in the row around it

    // What can be pressed is seen where somebody may want to press it.
    readonly property bool offersDeletion: deletable && (hover.hovered || focused || trash.activeFocus)

    signal deleteRequested()
    signal touched()

    readonly property alias body: body // all of it, never faint: for the picture of a drag

    implicitWidth: 240
    implicitHeight: 34
    opacity: isDragging ? 0.1 : 1
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: root.tag

    Behavior on opacity {
        enabled: root.fading
        NumberAnimation { duration: Theme.comeBack; easing.type: Easing.OutQuad }
    }

    HoverHandler { id: hover }

    Item {
        id: body

        anchors.fill: parent

        Rectangle {
            anchors.fill: parent
            radius: Theme.radius
            color: Theme.modelGround(root.ground)
            border.color: Theme.strong ? Theme.text : Theme.faded(Theme.modelText, hover.hovered ? 0.7 : 0.2)
            border.width: Theme.strong && hover.hovered ? 2 : 1
        }

        EmojiLabel {
            id: title

            anchors.left: parent.left
            anchors.leftMargin: Theme.pad
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, root.width - x - Theme.pad - trailing.width - (busy.visible ? 24 : 8))
            text: root.name
            font: Theme.bodyMedium
            color: Theme.modelText
            Accessible.ignored: true
        }

        BusyDot {
            id: busy

            anchors.left: title.right
            anchors.leftMargin: Theme.gap
            anchors.verticalCenter: parent.verticalCenter
            visible: root.isDownloading
            color: Theme.modelText
            size: Theme.labelSize
        }

        Row {
            id: trailing

            anchors.right: parent.right
            anchors.rightMargin: root.deletable ? 3 : Theme.pad
            anchors.verticalCenter: parent.verticalCenter
            spacing: Theme.tight

            EmojiLabel {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.width * 0.4)
                text: root.tag
                font: Theme.label
                color: Theme.modelTag
                Accessible.ignored: true
            }

            IconButton {
                id: trash

                anchors.verticalCenter: parent.verticalCenter
                visible: root.deletable
                opacity: root.offersDeletion ? 1 : 0
                symbol: "trash"
                size: Theme.smallSize
                color: Theme.strong ? Theme.modelText : Theme.faded(Theme.modelText, 0.7)
                help: "Remove from library"
                focusPolicy: root.reachable ? Qt.TabFocus : Qt.NoFocus
                onClicked: root.deleteRequested()

                // A finger can't hover: its first press brings the button to light.
                MouseArea {
                    anchors.fill: parent
                    enabled: !root.offersDeletion
                    onPressed: mouse => {
                        root.touched();
                        mouse.accepted = true;
                    }
                }
            }
        }
    }
}
