import QtQuick
import QtQuick.Templates as T
import Varnhold

// One line of text to type; edited tells only of what the user types.
T.TextField {
    id: root

    property string placeholder
    property string name
    property string help
    property bool secret: false
    property bool monospaced: false
    property real fontSize: Theme.labelSize

    signal edited(string text)

    readonly property InSight sight: InSight {
        item: root
        enabled: root.contentWidth > root.width - root.leftPadding - root.rightPadding
    }

    implicitWidth: 160
    implicitHeight: Theme.fieldHeight
    leftPadding: Theme.loose
    rightPadding: Theme.loose
    topPadding: 0
    bottomPadding: 0
    clip: sight.enabled && sight.holds // at some scales the frame loses a line to it
    opacity: enabled ? 1 : Theme.disabled
    verticalAlignment: TextInput.AlignVCenter
    echoMode: secret ? TextInput.Password : TextInput.Normal
    passwordCharacter: "•"
    placeholderText: placeholder
    font.family: monospaced ? Theme.monospace : Theme.body.family
    font.pixelSize: fontSize
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    selectByMouse: true
    Accessible.role: Accessible.EditableText
    Accessible.name: root.name !== "" ? root.name : root.placeholder
    Accessible.description: root.help
    onTextEdited: root.edited(root.text)

    background: Rectangle {
        radius: Theme.radius
        color: Theme.fieldBackground
        border.width: root.activeFocus ? Theme.ringWidth : 1
        border.color: root.activeFocus ? Theme.focusRing : Theme.fieldStroke
    }

    Text {
        anchors.fill: parent
        anchors.leftMargin: root.leftPadding
        anchors.rightMargin: root.rightPadding
        visible: root.length === 0 && root.preeditText === ""
        verticalAlignment: Text.AlignVCenter
        text: root.placeholder
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: root.font
        color: Theme.secondaryText
        Accessible.ignored: true
    }

    EditMenu {
        editor: root
        secret: root.secret
    }

    ToolTipArea { text: root.help }
}
