import QtQuick
import QtQuick.Templates as T
import Varnhold

// A plain button that is a sign. Its tool tip is also its name to those who can't see it.
T.Button {
    id: root

    property string symbol
    property real size: Theme.bodySize
    property color color: Theme.secondaryText
    property string help

    implicitWidth: sign.side + 8
    implicitHeight: sign.side + 8
    padding: 0
    opacity: enabled ? 1 : Theme.disabled
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: Accessible.Button
    Accessible.name: root.help
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: Item {
        Symbol {
            id: sign

            anchors.centerIn: parent
            name: root.symbol
            size: root.size
            color: root.color
        }
    }

    background: Rectangle {
        radius: Theme.radius - 1
        color: root.down ? Theme.pressed : root.hovered ? Theme.hover : "transparent"

        FocusRing { shown: root.visualFocus }
    }

    ToolTipArea { text: root.help }
}
