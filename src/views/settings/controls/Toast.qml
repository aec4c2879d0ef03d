import QtQuick
import Varnhold

// A word to the user at the foot of the page that comes and goes by itself.
Item {
    id: root

    property string text
    property bool shown: false

    implicitWidth: Math.ceil(words.implicitWidth) + 40
    implicitHeight: 40
    visible: opacity > 0
    opacity: shown ? 1 : 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.text
    Accessible.ignored: !shown

    Behavior on opacity { NumberAnimation { duration: Theme.calm } }

    transform: Translate {
        y: root.shown ? 0 : 24

        Behavior on y { NumberAnimation { duration: Theme.calm; easing.type: Easing.OutCubic } }
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.accent
    }

    Text {
        id: words

        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font: Theme.largeBold
        color: Theme.accentText
        Accessible.ignored: true
    }
}
