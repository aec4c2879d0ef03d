import QtQuick
import QtQuick.Templates as T
import Varnhold

// A button with words, and before them a sign if it has one.
T.Button {
    id: root

    property bool prominent: false
    property bool bordered: true
    property bool destructive: false
    property string symbol
    property string help
    property real size: Theme.bodySize // of the words
    property color ground: Theme.accent // of a prominent button; made readable under white
    property color color: prominent ? Theme.accentText : destructive ? Theme.red : Theme.text

    readonly property real signWidth: symbol === "" ? 0 : sign.side + row.spacing

    implicitWidth: Math.ceil(words.implicitWidth) + signWidth + leftPadding + rightPadding
    implicitHeight: size < 12 ? 20 : Theme.fieldHeight
    leftPadding: bordered || prominent ? (size < 12 ? 8 : 12) : 4
    rightPadding: leftPadding
    topPadding: 0
    bottomPadding: 0
    opacity: enabled ? 1 : Theme.disabled
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    font: Theme.font(size, prominent ? Font.Medium : Font.Normal)
    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.description: root.help
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.close

            Symbol {
                id: sign

                anchors.verticalCenter: parent.verticalCenter
                visible: root.symbol !== ""
                name: root.symbol
                size: root.size
                color: root.color
            }

            Label {
                id: words

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, root.availableWidth - root.signWidth)
                text: root.text
                font: root.font
                color: root.color
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        readonly property color resting: root.prominent ? Theme.filled(root.ground)
            : root.bordered ? Theme.control : "transparent"

        radius: root.size < 12 ? 4 : Theme.radius
        color: resting
        border.width: root.bordered && !root.prominent ? 1 : 0
        border.color: Theme.fieldStroke

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: root.down ? Theme.pressed : root.hovered ? Theme.hover : "transparent"
        }

        FocusRing {
            shown: root.visualFocus
            radius: parent.radius + 2
        }
    }

    ToolTipArea { text: root.help }
}
