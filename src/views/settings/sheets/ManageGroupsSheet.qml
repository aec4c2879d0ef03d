import QtQuick
import Varnhold

// Where groups are made, named and deleted. Every change is saved at once.
Sheet {
    id: root

    required property ManageGroupsModel form

    firstFocus: newName
    Accessible.name: "Custom Groups"
    Keys.onReturnPressed: form.dismiss()
    Keys.onEnterPressed: form.dismiss()
    onDismissed: form.dismiss()

    Column {
        id: column

        width: 380
        spacing: Theme.broad

        Label {
            width: parent.width
            text: "Custom Groups"
            font: Theme.title3
        }

        Text {
            width: parent.width
            topPadding: Theme.ample + Theme.fine
            bottomPadding: Theme.ample + Theme.fine
            visible: root.form.groups.count === 0
            horizontalAlignment: Text.AlignHCenter
            text: "No groups yet. Add one below."
            textFormat: Text.PlainText
            font: Theme.body
            color: Theme.secondaryText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        ScrollArea {
            id: list

            width: parent.width + Theme.gutter
            height: Math.min(rows.height, 264)
            visible: root.form.groups.count > 0

            AlwaysVisibleScrollbar {}

            Column {
                id: rows

                width: list.room
                spacing: Theme.gap

                Repeater {
                    model: root.form.groups

                    ManageGroupsRow {
                        id: row

                        width: rows.width
                        onRenamed: name => root.form.rename(row.groupId, name)
                        onRemoved: {
                            newName.forceActiveFocus(Qt.OtherFocusReason); // this row's is going
                            root.form.remove(row.groupId);
                        }
                    }
                }
            }
        }

        Divider { width: parent.width }

        Item {
            width: parent.width
            height: Theme.fieldHeight

            Field {
                id: newName

                width: parent.width - add.width - 8
                name: "New group name"
                placeholder: "New group name…"
                text: root.form.newName
                onEdited: words => root.form.newName = words
                Keys.onReturnPressed: event => enter(event)
                Keys.onEnterPressed: event => enter(event)

                // Adds what is named; with no name the sheet is done, as anywhere else in it.
                function enter(event: var) {
                    event.accepted = root.form.canAdd;
                    if (root.form.canAdd)
                        root.form.add();
                }
            }

            TextButton {
                id: add

                anchors.right: parent.right
                enabled: root.form.canAdd
                text: "Add Group"
                onClicked: {
                    newName.forceActiveFocus(Qt.OtherFocusReason); // the button is about to be disabled
                    root.form.add();
                }
            }
        }

        TextButton {
            anchors.right: parent.right
            height: 28
            width: Math.max(implicitWidth, 80)
            prominent: true
            text: "Done"
            onClicked: root.form.dismiss()
        }
    }
}
