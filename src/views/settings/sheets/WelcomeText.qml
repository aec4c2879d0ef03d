import QtQuick
import Varnhold

// The sections of the welcome.
Column {
    id: root

    spacing: 22
    topPadding: 20
    bottomPadding: 24

    component Paragraph: Text {
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        lineHeight: 1.15
        font: Theme.font(12, Font.Normal)
        color: Theme.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    component Section: Column {
        id: section

        property string title

        width: root.width
        spacing: 7

        Label {
            width: parent.width
            text: section.title
            font: Theme.font(14, Font.DemiBold)
            Accessible.role: Accessible.Heading
        }
    }

    Section {
        title: qsTr("What this app does")

        Paragraph {
            width: parent.width
            text: qsTr("Varnhold runs your fleet of AI bots as background agents that you chat with via Telegram or Slack. It manages chains of AI models with automatic failover so your bots never go silent.")
        }
    }

    Section {
        title: qsTr("The 4 Chains")

        Repeater {
            model: [
                {name: qsTr("⚖️ Governor Chain"), text: qsTr("Single AI that orchestrates everything — runs code blocks locally, synthesizes worker output, sends failover notices. Pick a fast, capable model here.")},
                {name: qsTr("Architect Chain"), text: qsTr("The model that talks to you. Tier-1 first, then falls down on failure.")},
                {name: qsTr("Coding Chain"), text: qsTr("Silent worker — executes the architect's code locally, never talks to you.")},
                {name: qsTr("Photo Chain"), text: qsTr("Vision models that describe images attached to your messages.")},
                {name: qsTr("Video Chain"), text: qsTr("Same as Photo but for video attachments.")}
            ]

            Item {
                id: line

                required property var modelData

                width: root.width
                height: Math.max(name.height, text.height)

                EmojiLabel {
                    id: name

                    width: 136
                    text: line.modelData.name
                    font: Theme.font(12, Font.DemiBold)
                }

                Paragraph {
                    id: text

                    x: 144
                    width: parent.width - x
                    text: line.modelData.text
                }
            }
        }
    }

    Section {
        title: qsTr("Built-in Telegram commands")

        Paragraph {
            width: parent.width
            text: qsTr("Type these in any bot's chat:")
            color: Theme.secondaryText
        }

        InlineMarkup {
            width: parent.width
            source: qsTr("• `trestart` — restart all 20+ bot daemons (loads new code/keys)\n• `/status` — check which models in each chain are reachable\n• `/ping` — quick health check\n• `/help` — list of commands")
        }
    }

    Section {
        title: qsTr("First steps")

        InlineMarkup {
            width: parent.width
            source: qsTr("1. Add your provider API keys in the **Providers** column\n2. Drag models from the **Library** into each chain\n3. Pick a **Governor** model from the dropdown\n4. Click **Save** when you have unsaved changes\n5. Run `trestart` to push changes to all live bots")
        }
    }

    Section {
        title: qsTr("Tip: Effort sliders")

        Paragraph {
            width: parent.width
            text: qsTr("Each chain has its own effort/thinking level. Off = no reasoning. High = max budget. Models that don't support reasoning silently ignore it.")
        }
    }
}
