import QtQuick
import Varnhold

// The heading of a stretch of the library.
Item {
    id: root

    required property LibraryPart library
    required property string section

    readonly property string note: library.note(section)
    readonly property bool divided: !library.isFirst(section)

    implicitHeight: line.height + (divided ? 15 : 4) + 4

    Divider {
        x: Theme.tight
        y: 6
        width: root.width
        visible: root.divided
    }

    Row {
        id: line

        x: Theme.tight
        y: root.divided ? 15 : 4
        spacing: Theme.close

        Label {
            text: root.section
            font: Theme.caption
            color: Theme.secondaryText
            Accessible.role: Accessible.Heading
        }

        Label {
            anchors.baseline: parent.children[0].baseline
            visible: root.note !== ""
            text: root.note
            font: root.section === "OpenRouter" ? Theme.labelLight : Theme.smallLight
            color: Theme.secondaryText
            opacity: Theme.strong ? 1 : 0.7
        }
    }
}
