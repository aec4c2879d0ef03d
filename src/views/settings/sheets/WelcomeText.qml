import QtQuick
import Varnhold

// The sections of the welcome.
Column {
    id: root

    spacing: Theme.roomy + Theme.fine
    topPadding: Theme.roomy
    bottomPadding: Theme.vast

    component Paragraph: Text {
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        lineHeight: 1.15
        font: Theme.label
        color: Theme.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    component Section: Column {
        id: section

        property string title

        width: root.width
        spacing: Theme.loose

        Label {
            width: parent.width
            text: section.title
            font: Theme.largeStrong
            Accessible.role: Accessible.Heading
        }
    }

    Section {
        title: "What this app does"

        Paragraph {
            width: parent.width
            text: "Varnhold runs your fleet of AI bots as background agents that you chat with via Telegram or Slack. It manages chains of AI models with automatic failover so your bots never go silent."
        }
    }

    Section {
        title: "The 4 Chains"

        Repeater {
            model: [
                {name: "⚖️ Governor Chain", text: "Single AI that orchestrates everything — runs code blocks locally, synthesizes worker output, sends failover notices. Pick a fast, capable model here."},
                {name: "Architect Chain", text: "The model that talks to you. Tier-1 first, then falls down on failure."},
                {name: "Coding Chain", text: "Silent worker — executes the architect's code locally, never talks to you."},
                {name: "Photo Chain", text: "Vision models that describe images attached to your messages."},
                {name: "Video Chain", text: "Same as Photo but for video attachments."}
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
                    font: Theme.labelStrong
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
        title: "Built-in Telegram commands"

        Paragraph {
            width: parent.width
            text: "Type these in any bot's chat:"
            color: Theme.secondaryText
        }

        InlineMarkup {
            width: parent.width
            source: "• `trestart` — restart all 20+ bot daemons (loads new code/keys)\n• `/status` — check which models in each chain are reachable\n• `/ping` — quick health check\n• `/help` — list of commands"
        }
    }

    Section {
        title: "First steps"

        InlineMarkup {
            width: parent.width
            source: "1. Add your provider API keys in the **Providers** column\n2. Drag models from the **Library** into each chain\n3. Pick a **Governor** model from the dropdown\n4. Click **Save** when you have unsaved changes\n5. Run `trestart` to push changes to all live bots"
        }
    }

    Section {
        title: "Tip: Effort sliders"

        Paragraph {
            width: parent.width
            text: "Each chain has its own effort/thinking level. Off = no reasoning. High = max budget. Models that don't support reasoning silently ignore it."
        }
    }
}
