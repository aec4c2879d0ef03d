import QtQuick
import QtQuick.Layouts
import Varnhold

// A heading over some controls.
ColumnLayout {
    id: root

    property string title

    spacing: 8

    Label {
        text: root.title
        font: Theme.font(9, Font.Bold, 1)
        color: Theme.secondaryText
    }
}
