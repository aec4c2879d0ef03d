import QtQuick
import Varnhold

// Where a model is dropped that should come first.
DashedFrame {
    id: root

    required property string owner // whose strip it is, as it is spoken
    required property bool targeted // a drag hovers over it

    readonly property alias hovered: zone.hovered
    readonly property alias dropPlace: zone.dropPlace

    property bool useful: true // as zones have it

    signal modelDropped(string text)

    implicitHeight: 26
    radius: Theme.radius
    lineWidth: 1.5
    dash: 4
    fill: targeted ? Theme.faded(Theme.blue, 0.25) : Theme.faded(Theme.gray, 0.08)
    stroke: targeted ? Theme.blue : Theme.line(Theme.gray, 0.4)

    Text {
        anchors.centerIn: parent
        text: "⤴︎"
        textFormat: Text.PlainText
        font: Theme.large
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    DropZone {
        id: zone

        anchors.fill: parent
        kinds: ["model"]
        name: "Top of %1".arg(root.owner)
        Accessible.role: Accessible.Grouping
        Accessible.name: name
        useful: root.useful
        onTextDropped: text => root.modelDropped(text)
    }
}
