import QtQuick
import Varnhold

// A bot's name and, in the room it leaves, the bot's role. A long name leaves room for the role's
// beginning.
Item {
    id: root

    required property string fullName
    required property string role
    required property bool struck

    readonly property real roleLeast: role === "" ? 0 : Math.min(duty.implicitWidth, 24) + Theme.gap

    implicitHeight: name.implicitHeight

    EmojiLabel {
        id: name

        width: Math.min(implicitWidth, root.width - root.roleLeast)
        text: root.fullName
        font: Qt.font({
            family: Theme.textFamily, pixelSize: 12, weight: Font.Bold, strikeout: root.struck
        })
        Accessible.ignored: true
    }

    Label {
        id: duty

        anchors.left: name.right
        anchors.leftMargin: Theme.gap
        anchors.baseline: name.baseline
        width: Math.min(implicitWidth, Math.max(0, root.width - name.width - Theme.gap))
        text: root.role
        font: Theme.font(11, Font.Normal)
        color: Theme.secondaryText
        Accessible.ignored: true
    }
}
