import QtQuick
import Varnhold

// A word in a colour of its own on a soft ground of that colour.
Item {
    id: root

    property string text
    property color color: Theme.blue
    property color on: Theme.card // what it stands on

    readonly property color ground: Theme.over(Theme.faded(color, 0.13), on)

    implicitWidth: Math.ceil(word.implicitWidth) + 12
    implicitHeight: 18
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    Rectangle {
        anchors.fill: parent
        radius: Theme.chipRadius
        color: Theme.faded(root.color, 0.13)
        border.width: Theme.edgeWidth
        border.color: word.color
    }

    Text {
        id: word

        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font: Theme.smallBold
        color: Theme.readable(root.color, root.ground)
        Accessible.ignored: true
    }
}
