import QtQuick
import Varnhold

// What a group is for, in its own words; each change is saved.
TextArea {
    id: root

    required property GroupPart group

    // The keyboard goes there, and what scrolls goes along.
    function begin() {
        soon.start();
    }

    Timer {
        id: soon

        interval: 0 // once it has its place
        onTriggered: root.editor.forceActiveFocus(Qt.OtherFocusReason)
    }

    implicitHeight: 90
    name: "Objectives of %1".arg(group.name)
    fontSize: Theme.smallSize
    text: group.objectives
    onEdited: text => group.setObjectives(text)
}
