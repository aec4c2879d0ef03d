import QtQuick
import QtQuick.Layouts
import Varnhold

// What is read: texts, signs of state, and models in every colour.
ColumnLayout {
    id: root

    spacing: 14

    GalleryGroup {
        title: "TEXT"

        Label { text: "Headline"; font: Theme.headline }
        Label { text: "Title of a block"; font: Theme.title3 }
        Label { text: "Local Tools"; font: Theme.caption; color: Theme.secondaryText }
        EmojiLabel { text: "⚖️ Governor 🤖 & <b>data</b>"; font: Theme.font(12, Font.Bold) }
        EmojiLabel { Layout.preferredWidth: 150; text: "⚖️ A title too long to stand here"; font: Theme.font(12, Font.Bold) }
        Hint { Layout.fillWidth: true; text: "Connect your AI accounts — sign in or paste an API key to unlock each provider's models" }
        InlineMarkup { Layout.fillWidth: true; source: "• `/status` — check **all** models\n• `/help` — list of commands" }
        Divider { Layout.fillWidth: true }
    }

    GalleryGroup {
        title: "SIGNS OF STATE"

        RowLayout {
            spacing: 10

            StatusDot { color: Theme.green; help: "Online" }
            StatusDot { color: Theme.orange; help: "Paused" }
            StatusDot { color: Theme.red; help: "Offline"; hollow: true }
            StatusDot { color: Theme.gray; help: "Cache cold"; size: 7 }
            Badge { text: "telegram" }
            Badge { text: "slack"; color: Theme.slackPurple }
        }
        RowLayout {
            Chip { symbol: "folder-fill"; text: "doctrine"; implicitWidth: 110 }
            Chip { symbol: "file-fill"; text: "a-name-that-is-too-long-for-a-chip.txt" }
        }
    }

    GalleryGroup {
        title: "MODELS"

        Repeater {
            model: ["purple", "blue", "green", "orange", "cyan", "red", "teal", "indigo", "pink", "yellow"]

            ModelBlockView {
                required property string modelData
                required property int index

                Layout.fillWidth: true
                implicitHeight: 26
                name: "Model in " + modelData
                tag: index === 1 ? "A family with a long name" : "Direct"
                ground: modelData
                deletable: index % 2 === 0
                isDragging: index === 11
            }
        }
    }
}
