import QtQuick
import Varnhold

// One line of text from data whose emoji keep their colours; what doesn't fit is told by its tool tip.
Item {
    id: root

    property string text
    property string help
    property font font: Theme.body
    property color color: Theme.text
    property int horizontalAlignment: Text.AlignLeft

    readonly property string shownText: MarkedText.elided(text, font, width)
    readonly property bool truncated: shownText !== text

    implicitWidth: Math.ceil(MarkedText.width(text, font))
    implicitHeight: Math.ceil(metrics.height)
    baselineOffset: metrics.ascent
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    FontMetrics {
        id: metrics

        font: root.font
    }

    Text {
        // Emoji and many scripts have taller lines; the text font alone decides where the baseline is.
        y: metrics.ascent - MarkedText.ascent(root.shownText, root.font)
        width: root.width
        horizontalAlignment: root.horizontalAlignment
        text: MarkedText.plain(root.shownText)
        textFormat: Text.RichText
        font: root.font
        color: root.color
        Accessible.ignored: true
    }

    ToolTipArea {
        text: root.help !== "" ? root.help : root.truncated ? root.text : ""
    }
}
