import QtQuick
import Varnhold

// The models of a stack in failover order, and where more are dropped: on the strip to come first,
// anywhere else in the area to come last.
//
// Higher than it needs to be, the area grows with it.
Item {
    id: root

    required property StackPart stack
    required property string owner // whose models they are, as it is spoken
    required property bool springs

    property bool topTargeted: topHovered // a drag hovers over the strip
    property var builtIns: [] // names of tools that stand before the models
    property bool deletable: false // rows can be taken out of the library
    property bool removable: false // rows can be taken out of the stack
    property real minimumHeight: 220 // of the area under the strip
    property bool fading: false // what was dragged comes back gently

    readonly property alias topHovered: strip.hovered
    readonly property bool useful: !DragSession.active || root.stack.takesModel(DragSession.payload)

    signal deleteRequested(string uid)

    implicitHeight: area.y + area.implicitHeight

    ZoneLabel {
        id: heading

        text: "MODELS"
    }

    TopStrip {
        id: strip

        anchors.top: heading.bottom
        anchors.topMargin: Theme.slim
        width: parent.width
        owner: root.owner
        useful: root.useful
        targeted: root.topTargeted
        onModelDropped: text => {
            list.expectAt(strip.mapToItem(list, strip.dropPlace).y);
            root.stack.dropOnTop(text);
        }
    }

    Rectangle {
        anchors.fill: area
        radius: Theme.zoneRadius
        visible: area.hovered && root.useful
        color: Theme.faded(Theme.blue, 0.12)
        border.color: Theme.blue
        border.width: 1
    }

    // Where what is dropped comes to stand.
    Rectangle {
        objectName: "landing"

        readonly property bool first: root.topTargeted
        readonly property bool known: DragSession.active && list.rowOf(DragSession.payload) >= 0

        x: list.x
        z: 1
        // In the middle of the space between two rows.
        y: area.y + list.y + (first || list.rows === 0 ? -3 : list.implicitHeight + 1)
        width: list.width
        height: 2
        radius: Theme.hair
        visible: (first || area.hovered) && !known && root.useful
        color: Theme.blue
    }

    DropZone {
        id: area

        anchors.top: strip.bottom
        width: parent.width
        height: Math.max(implicitHeight, root.height - y)
        implicitHeight: Math.max(root.minimumHeight, tools.height + list.anchors.topMargin + list.implicitHeight + 10)
        kinds: ["model"]
        name: "End of %1".arg(root.owner)
        Accessible.role: Accessible.Grouping
        Accessible.name: name
        useful: root.useful
        onTextDropped: text => {
            list.expectAt(area.mapToItem(list, area.dropPlace).y);
            root.stack.dropOnModels(text);
        }

        Label {
            anchors.centerIn: parent
            visible: root.stack.models.count === 0 && root.builtIns.length === 0
            text: "Drag models here"
            color: Theme.secondaryText
        }

        Column {
            id: tools

            x: 5
            y: 5
            width: parent.width - 10
            spacing: Theme.tight

            Repeater {
                model: root.builtIns

                BuiltInRow {
                    required property string modelData

                    width: tools.width
                    name: modelData
                }
            }
        }

        DraggableList {
            id: list

            anchors.top: tools.bottom
            anchors.topMargin: root.builtIns.length > 0 ? 4 : 0
            x: 5
            width: parent.width - 10
            height: implicitHeight
            kinds: ["model"]
            name: "Models of %1".arg(root.owner)
            model: root.stack.models
            rowHeight: 34
            spacing: Theme.tight
            springs: root.springs
            delegate: ModelRow {
                deletable: root.deletable
                removable: root.removable
                fading: root.fading
                owner: root.owner
                onBegan: root.stack.startDrag(uid)
                onDeleteRequested: root.deleteRequested(uid)
                onRemoveRequested: root.stack.removeModel(uid)
            }
            onRowEntered: uid => root.stack.rowEntered(uid)
            onRowDropped: uid => root.stack.rowDropped(uid)
        }
    }
}
