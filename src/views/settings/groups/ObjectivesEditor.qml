import QtQuick
import Varnhold

// What a group is for, in its own words; each change is saved.
TextArea {
    required property GroupPart group

    implicitHeight: 90
    name: qsTr("Objectives of %1").arg(group.name)
    fontSize: 11
    text: group.objectives
    onEdited: text => group.setObjectives(text)
}
