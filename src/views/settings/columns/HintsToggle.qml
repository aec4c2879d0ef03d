import QtQuick
import QtQuick.Templates as T
import Varnhold

// Shows and hides the explanations all over the window.
T.Button {
    id: root

    required property SettingsModel settings

    readonly property bool on: settings.showHints
    readonly property string help: on ? "Hide hints" : "Show hints"
    readonly property color ink: on ? Theme.yellow : Theme.secondaryText

    implicitWidth: row.implicitWidth + 14
    implicitHeight: 22
    padding: 0
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    text: "Hints"
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: help
    Accessible.checkable: true
    Accessible.checked: on
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    onClicked: settings.showHints = !on

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.tight

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                name: root.on ? Theme.symbol("lightbulb.fill") : "lightbulb"
                size: Theme.largeSize
                color: root.ink
            }

            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: root.text
                font: Theme.labelMedium
                color: root.ink
                Accessible.ignored: true
            }
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: root.on ? Theme.faded(Theme.yellow, 0.15) : root.hovered ? Theme.hover : "transparent"
        border.width: root.on ? Theme.edgeWidth : 0
        border.color: Theme.yellow

        FocusRing { shown: root.visualFocus }
    }

    ToolTipArea { text: root.help }
}
