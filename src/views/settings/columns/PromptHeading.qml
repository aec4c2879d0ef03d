import QtQuick
import Varnhold

// The heading of the selected bot's prompt: whose it is, and perhaps what it is for.
Item {
    id: root

    required property string subject
    required property bool showHints

    readonly property real rest: width - title.width - (subject === "" ? 0 : Theme.gap)

    implicitHeight: Math.max(title.implicitHeight, 18)

    Label {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        text: "Bot Prompt"
        font: Theme.headline
        Accessible.role: Accessible.Heading
    }

    EmojiLabel {
        id: whose

        anchors.left: title.right
        anchors.leftMargin: Theme.gap
        anchors.baseline: title.baseline
        visible: root.subject !== ""
        width: visible ? Math.min(implicitWidth, root.showHints ? root.rest / 2 : root.rest) : 0
        text: root.subject
        font: Theme.label
        color: Theme.secondaryText
    }

    Label {
        anchors.left: whose.visible ? whose.right : title.right
        anchors.leftMargin: Theme.gap
        anchors.right: parent.right
        anchors.baseline: title.baseline
        visible: root.showHints
        text: "· Additional instructions specific to the selected bot's role"
        font: Theme.small
        color: Theme.secondaryText
    }
}
