import QtQuick
import Varnhold

// A quiet line or two that explains what stands above it.
Text {
    textFormat: Text.PlainText
    wrapMode: Text.Wrap
    font: Theme.small
    color: Theme.secondaryText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
