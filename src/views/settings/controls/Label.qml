import QtQuick
import Varnhold

// One line of plain text; what doesn't fit is told by its tool tip.
Text {
    id: root

    property string help

    textFormat: Text.PlainText
    elide: Text.ElideRight
    maximumLineCount: 1
    horizontalAlignment: Text.AlignLeft // in every script
    font: Theme.body
    color: Theme.text
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    ToolTipArea {
        text: root.help !== "" ? root.help : root.truncated ? root.text : ""
    }
}
