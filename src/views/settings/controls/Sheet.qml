import QtQuick
import Varnhold

// Something to be answered before the page goes on: it dims the page, keeps the keyboard to itself,
// and Escape dismisses it. As large as what it holds.
FocusScope {
    id: root

    property string title
    property real padding: Theme.roomy
    property real spacing: Theme.broad
    property Item firstFocus: null // where the keyboard begins; the first control, if nobody says

    default property alias content: holder.data

    signal dismissed()

    function enter() {
        former.remember(root);
        const first = start.nextItemInFocusChain(true);
        (firstFocus ?? (first === end ? root : first)).forceActiveFocus(Qt.PopupFocusReason);
    }

    anchors.fill: parent
    z: 100
    Accessible.role: Accessible.Dialog
    Accessible.name: root.title
    Keys.onEscapePressed: root.dismissed()
    onVisibleChanged: {
        if (visible)
            enter();
        else
            former.giveBack();
    }
    Component.onCompleted: if (visible) enter()
    Component.onDestruction: if (visible) former.giveBack()

    FormerFocus { id: former }

    Rectangle {
        anchors.fill: parent
        color: Theme.dim

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
            acceptedButtons: Qt.AllButtons
            onWheel: wheel => wheel.accepted = true
        }
    }

    Panel {
        anchors.fill: panel
        depth: 12
    }

    Item {
        id: panel

        // On whole pixels at every scale, or frames would lose a line to their clipping.
        x: 2 * Math.round((parent.width - width) / 4)
        y: 2 * Math.round((parent.height - height) / 4)
        width: holder.childrenRect.width + 2 * root.padding
        height: (heading.visible ? heading.height + root.spacing : 0) + holder.childrenRect.height
            + 2 * root.padding

        // The keyboard goes round: beyond the last control comes the first.
        Item {
            id: start

            activeFocusOnTab: true
            Accessible.ignored: true
            onActiveFocusChanged: if (activeFocus) end.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
        }

        Label {
            id: heading

            x: root.padding
            y: root.padding
            width: panel.width - 2 * root.padding
            visible: root.title !== ""
            text: root.title
            font: Theme.title3
        }

        Item {
            id: holder

            x: root.padding
            y: root.padding + (heading.visible ? heading.height + root.spacing : 0)
            width: childrenRect.width
            height: childrenRect.height
        }

        Item {
            id: end

            activeFocusOnTab: true
            Accessible.ignored: true
            onActiveFocusChanged: if (activeFocus) start.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        }
    }
}
