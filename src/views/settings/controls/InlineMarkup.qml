import QtQuick
import Varnhold

// Lines of text in which **words** are bold and `words` are code.
Text {
    id: root

    property string source

    text: MarkedText.inlineMarkup(source, Theme.monospace)
    textFormat: Text.RichText
    wrapMode: Text.Wrap
    font: Theme.font(12, Font.Normal)
    color: Theme.text
    Accessible.role: Accessible.StaticText
    Accessible.name: root.source
}
