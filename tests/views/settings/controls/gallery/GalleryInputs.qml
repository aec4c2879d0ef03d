import QtQuick
import QtQuick.Layouts
import Varnhold

// What can be pressed, chosen or typed into.
ColumnLayout {
    id: root

    spacing: 14

    GalleryGroup {
        title: "BUTTONS"

        RowLayout {
            spacing: 8

            TextButton { text: "Reset" }
            TextButton { text: "Save"; prominent: true }
            TextButton { text: "Delete"; destructive: true }
            TextButton { text: "Off"; enabled: false }
        }
        RowLayout {
            spacing: 8

            TextButton { text: "Connect"; size: 11; prominent: true; ground: Theme.orange }
            TextButton { text: "Attach File / Folder"; size: 11; symbol: "paperclip" }
            TextButton { text: "Objectives"; size: 11; bordered: false; symbol: "text-align-left" }
        }
        Flow {
            Layout.fillWidth: true
            spacing: 2

            Repeater {
                model: Object.values(Theme.symbols).concat(["trash", "paperclip", "lightbulb",
                    "minus-circle", "text-align-left", "caret-left-bold", "caret-right-bold", "caret-up-bold",
                    "caret-down-bold", "x-bold", "x-circle-fill"])

                IconButton {
                    required property string modelData

                    symbol: modelData
                    size: 13
                    help: modelData
                }
            }
        }
    }

    GalleryGroup {
        title: "STEPPERS AND CHOICES"

        Stepper { label: "Effort"; valueText: "Off"; inactive: true; canGoLeft: false }
        Stepper { label: "Context"; valueText: "128K"; valueWidth: 50 }
        Segmented { name: "Response"; values: ["Short", "Normal", "Long"]; current: "Normal" }
        Segmented { name: "Service"; values: ["Telegram", "Slack"]; current: "Telegram"; enabled: false }
        RowLayout {
            Picker { name: "Provider"; values: ["claude", "openai", "gemini"]; current: "claude" }
            Picker { name: "Colour"; values: ["purple"]; current: "purple"; enabled: false; implicitWidth: 90 }
        }
    }

    GalleryGroup {
        title: "FIELDS"

        Field { Layout.fillWidth: true; placeholder: "Role" }
        Field { Layout.fillWidth: true; text: "architect" }
        Field { Layout.fillWidth: true; text: "123456:secret"; secret: true }
        Field { Layout.fillWidth: true; text: "123456:AAF-x"; monospaced: true }
        TextArea {
            Layout.fillWidth: true
            implicitHeight: 70
            name: "Prompt"
            text: "You are the head of a small house.\nBe brief.\nBe kind.\nBe right.\nBe back soon."
        }
    }

    GalleryGroup {
        title: "PLACES TO DROP ON"

        TopStrip { Layout.fillWidth: true; owner: "Rest"; targeted: false }
        TopStrip { Layout.fillWidth: true; owner: "Drag"; targeted: true }
        AssignedBot {
            Layout.fillWidth: true
            label: "com.example.planner"; icon: "🧭"; title: "Planner"; role: "planner"; paused: false; owner: "Rest"
        }
        AssignedBot {
            Layout.fillWidth: true
            label: "com.example.night"; icon: "🌙"; title: "Night Watch"; role: "night-watch"; paused: true; owner: "Rest"
        }
    }
}
