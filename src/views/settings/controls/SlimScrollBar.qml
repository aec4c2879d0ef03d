import QtQuick
import QtQuick.Templates as T
import Varnhold

// A scroll bar that is there only while it is of use, and grows under the pointer.
T.ScrollBar {
    id: root

    property bool lit: false // whoever looks at the area may want it

    readonly property bool across: orientation === Qt.Horizontal
    readonly property int thickness: hovered || pressed ? 7 : 5

    property bool stands: false // what is lit from the start doesn't come slowly

    Timer {
        interval: 0
        running: true
        onTriggered: root.stands = true
    }

    implicitWidth: Theme.gutter
    implicitHeight: Theme.gutter
    padding: Theme.fine
    policy: T.ScrollBar.AlwaysOn
    minimumSize: 0.08
    z: 2
    Accessible.name: "Scroll bar"

    contentItem: Item {
        implicitWidth: 7
        implicitHeight: 7

        Rectangle {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            width: root.across ? parent.width : root.thickness
            height: root.across ? root.thickness : parent.height
            radius: root.thickness / 2
            color: Theme.text
            opacity: root.pressed ? 0.5 + more : root.hovered ? 0.4 + more : root.lit ? 0.25 + more : 0

            readonly property real more: Theme.strong ? 0.4 : 0

            Behavior on opacity {
                enabled: root.stands
                NumberAnimation { duration: Theme.calm }
            }
        }
    }
}
