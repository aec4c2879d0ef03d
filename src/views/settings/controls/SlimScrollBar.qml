import QtQuick
import QtQuick.Templates as T
import Varnhold

// A scroll bar that is there only while it is of use, and grows under the pointer.
T.ScrollBar {
    id: root

    property bool lit: false // whoever looks at the area may want it

    readonly property bool wide: hovered || pressed

    width: 11
    padding: 2
    policy: T.ScrollBar.AlwaysOn
    minimumSize: 0.08
    z: 2
    Accessible.name: qsTr("Scroll bar")

    contentItem: Item {
        implicitWidth: 7

        Rectangle {
            anchors.right: parent.right
            width: root.wide ? 7 : 5
            height: parent.height
            radius: width / 2
            color: Theme.text
            opacity: root.pressed ? 0.5 : root.hovered ? 0.4 : root.lit ? 0.25 : 0

            Behavior on opacity { NumberAnimation { duration: Theme.calm } }
            Behavior on width { NumberAnimation { duration: Theme.quick } }
        }
    }
}
