import QtQuick
import Varnhold

// Lines of text in which **words** are bold and `words` are code.
Item {
    id: root

    property string source
    property color color: Theme.text
    property font font: Theme.label

    // Rich text changes its mind about its width while a layout asks for it, which layouts don't stand.
    implicitWidth: 320
    implicitHeight: Math.ceil(words.implicitHeight)
    Accessible.role: Accessible.StaticText
    Accessible.name: MarkedText.spoken(root.source)

    Text {
        id: words

        width: root.width
        text: MarkedText.inlineMarkup(root.source, Theme.monospace)
        textFormat: Text.RichText
        wrapMode: Text.Wrap
        font: root.font
        color: root.color
        Accessible.ignored: true
    }
}
