import QtQuick
import Varnhold

// A bot's name and, where it leaves room enough to be of use, the bot's role.
Item {
    id: root

    required property string fullName
    required property string role
    required property bool struck

    readonly property real room: root.width - name.width - Theme.gap
    readonly property bool whole: !name.truncated && duty.visible && !duty.truncated
    readonly property string help: whole ? "" : fullName + " · " + role

    implicitHeight: name.implicitHeight

    EmojiLabel {
        id: name

        width: Math.min(implicitWidth, root.width)
        text: root.fullName
        help: root.help
        font: Qt.font({
            family: Theme.textFamily, pixelSize: Theme.labelSize, weight: Font.Bold, strikeout: root.struck
        })
        Accessible.ignored: true
    }

    Label {
        id: duty

        anchors.left: name.right
        anchors.leftMargin: Theme.gap
        anchors.baseline: name.baseline
        width: Math.min(implicitWidth, Math.max(0, root.room))
        visible: root.room >= Math.min(implicitWidth, 28)
        text: root.role
        help: root.help
        font: Theme.small
        color: Theme.secondaryText
        Accessible.ignored: true
    }
}
