import QtQuick
import Varnhold

// The text that all bots are told, and below it the one of the selected bot.
Item {
    id: root

    required property SettingsModel settings

    readonly property PromptsPart prompts: settings.prompts
    readonly property real editorHeight: (height - masterTop - botHeading.height - 2 * Theme.gap - Theme.pad) / 2
    readonly property int headingHeight: 26
    readonly property real masterTop: (hint.visible ? hint.y + hint.height : headingHeight) + Theme.gap

    implicitWidth: 400
    implicitHeight: 420

    Label {
        id: title

        anchors.left: parent.left
        anchors.right: hints.left
        anchors.rightMargin: Theme.gap
        height: root.headingHeight
        verticalAlignment: Text.AlignVCenter
        text: "Master Prompt Injection"
        font: Theme.headline
        Accessible.role: Accessible.Heading
    }

    HintsToggle {
        id: hints

        anchors.right: parent.right
        y: (root.headingHeight - height) / 2
        settings: root.settings
    }

    Hint {
        id: hint

        y: root.headingHeight
        width: parent.width
        visible: root.settings.showHints
        text: "Injected into every bot's system prompt — use it to define your identity, values, and global rules"
    }

    TextArea {
        id: master

        y: root.masterTop
        width: parent.width
        height: root.editorHeight
        name: "Master Prompt Injection"
        text: root.prompts.masterPrompt
        onEdited: text => root.prompts.masterPrompt = text
    }

    PromptHeading {
        id: botHeading

        anchors.top: master.bottom
        anchors.topMargin: Theme.pad
        width: parent.width
        subject: root.prompts.botSubject
        showHints: root.settings.showHints
    }

    TextArea {
        anchors.top: botHeading.bottom
        anchors.topMargin: Theme.gap
        width: parent.width
        height: root.editorHeight
        name: "Bot Prompt"
        text: root.prompts.botPrompt
        onEdited: text => root.prompts.botPrompt = text
    }
}
