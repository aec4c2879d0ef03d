#include <QRegularExpression>
#include <functional>
#include <string>
#include <vector>

#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

struct FirstRun : ::testing::Test, ShownSheets {
    void appear() {
        model->appear();
        platform.advance(400ms);
        platform.settle();
    }
    [[nodiscard]] bool seen(const char* key) const { return platform.defaults.boolean(key); }
    [[nodiscard]] std::string standing() const { return model->sheets()->standing().toStdString(); }
};

TEST_F(FirstRun, ShowsTheWelcomeAndThenTheTip) {
    show();
    appear();
    EXPECT_TRUE(shows("Welcome to Varnhold"));
    EXPECT_FALSE(shows("Welcome to the Model Library"));
    click("Got it");
    EXPECT_TRUE(seen("hasSeenWelcome_v7"));
    EXPECT_FALSE(seen("hasSeenLibraryTip_v1"));
    EXPECT_FALSE(shows("Welcome to Varnhold"));
    EXPECT_TRUE(shows("Welcome to the Model Library"));
    click("Got it — let me add models");
    EXPECT_TRUE(seen("hasSeenLibraryTip_v1"));
    EXPECT_EQ(standing(), ""); // it opens no form, whatever its button says
    EXPECT_FALSE(view->showAddModelSheet);
}

TEST_F(FirstRun, WaitsUntilTheWindowHasComeUp) {
    show();
    model->appear();
    platform.advance(399ms);
    EXPECT_EQ(standing(), "");
    platform.advance(1ms);
    EXPECT_EQ(standing(), "welcome");
}

TEST_F(FirstRun, TheWelcomeIsDismissedByItsCloseButtonByEnterAndByEscape) {
    for (const auto& dismiss : std::vector<std::function<void(ShownSheets&)>>{
             [](ShownSheets& shown) { shown.click("Close"); },
             [](ShownSheets& shown) { shown.press(Qt::Key_Return); },
             [](ShownSheets& shown) { shown.press(Qt::Key_Escape); }}) {
        ShownSheets shown;
        shown.show();
        shown.view->showWelcome = true;
        shown.view->changed();
        dismiss(shown);
        EXPECT_TRUE(shown.platform.defaults.boolean("hasSeenWelcome_v7"));
        EXPECT_FALSE(shown.view->showWelcome);
        EXPECT_FALSE(shown.shows("Welcome to Varnhold"));
    }
}

TEST_F(FirstRun, IsOverOnceBothWereSeen) {
    platform.defaults.booleans = {{"hasSeenWelcome_v7", true}, {"hasSeenLibraryTip_v1", true}};
    show();
    model->appear();
    EXPECT_THAT(platform.record, Not(Contains("post main after 400")));
    platform.advance(5s);
    EXPECT_EQ(standing(), "");
}

TEST_F(FirstRun, DoesNotComeBackOnTheSecondOpening) {
    show();
    appear();
    press(Qt::Key_Escape);
    press(Qt::Key_Escape);
    window.close();
    window.show();
    appear();
    EXPECT_EQ(standing(), "");
}

TEST_F(FirstRun, StandsThereStillWhenTheWindowWasClosedOverIt) {
    show();
    appear();
    window.close();
    EXPECT_FALSE(seen("hasSeenWelcome_v7"));
    window.show();
    appear();
    EXPECT_TRUE(shows("Welcome to Varnhold"));
}

TEST_F(FirstRun, TheWelcomeTellsWhatItHasToTell) {
    show();
    appear();
    for (const char* text :
         {"⚖️",
          "Ostrelle LLC autonomous AI ecosystem",
          "What this app does",
          "Varnhold runs your fleet of AI bots as background agents that you chat with via "
          "Telegram "
          "or Slack. It manages chains of AI models with automatic failover so your bots never go "
          "silent.",
          "The 4 Chains",
          "⚖️ Governor Chain",
          "Single AI that orchestrates everything — runs code blocks locally, synthesizes worker "
          "output, sends failover notices. Pick a fast, capable model here.",
          "Architect Chain",
          "The model that talks to you. Tier-1 first, then falls down on failure.",
          "Coding Chain",
          "Silent worker — executes the architect's code locally, never talks to you.",
          "Photo Chain",
          "Vision models that describe images attached to your messages.",
          "Video Chain",
          "Same as Photo but for video attachments.",
          "Built-in Telegram commands",
          "Type these in any bot's chat:",
          "First steps",
          "Tip: Effort sliders",
          "Each chain has its own effort/thinking level. Off = no reasoning. High = max budget. "
          "Models that don't support reasoning silently ignore it."}) {
        EXPECT_TRUE(shows(text)) << text;
    }
}

TEST_F(FirstRun, MarksBoldWordsAndCodeAndKeepsTheLines) {
    show();
    appear();
    const char* words = "1. Add your provider API keys in the Providers column\n"
                        "2. Drag models from the Library into each chain\n"
                        "3. Pick a Governor model from the dropdown\n"
                        "4. Click Save when you have unsaved changes\n"
                        "5. Run trestart to push changes to all live bots";
    const QQuickItem* steps = named(QString::fromUtf8(words));
    ASSERT_NE(steps, nullptr);
    const QString html = steps->childItems().front()->property("text").toString();
    EXPECT_FALSE(html.contains(QStringLiteral("**")));
    EXPECT_FALSE(html.contains(QLatin1Char('`')));
    for (const char* bold : {"Providers", "Library", "Governor", "Save"}) {
        EXPECT_TRUE(html.contains(QStringLiteral("<b>%1</b>").arg(QLatin1String(bold)))) << bold;
    }
    EXPECT_TRUE(html.contains(QRegularExpression(QStringLiteral("font-family:[^>]*>trestart<"))));
    EXPECT_GT(steps->implicitHeight(), 5 * 12); // five lines, not one that wraps
    EXPECT_TRUE(shows("• trestart — restart all 20+ bot daemons (loads new code/keys)\n"
                      "• /status — check which models in each chain are reachable\n"
                      "• /ping — quick health check\n"
                      "• /help — list of commands"));
}

TEST_F(FirstRun, TheWelcomeScrollsByKeysAndStaysInASmallWindow) {
    show({700, 420});
    appear();
    const QQuickItem* last = named(QStringLiteral("Tip: Effort sliders"));
    ASSERT_NE(last, nullptr);
    const qreal before = last->mapToScene({0, 0}).y();
    for (int i = 0; i < 20; ++i) {
        press(Qt::Key_PageDown);
    }
    EXPECT_LT(last->mapToScene({0, 0}).y(), before);
    EXPECT_LT(last->mapToScene({0, 0}).y(), 420);
    click("Got it");
    EXPECT_TRUE(seen("hasSeenWelcome_v7"));
}

TEST_F(FirstRun, TheTipTellsHowModelsGetIntoTheLibrary) {
    platform.defaults.booleans = {{"hasSeenWelcome_v7", true}};
    show();
    appear();
    for (const char* text :
         {"Welcome to the Model Library",
          "Before you can assign AI models to your chains, you need to add the models you have "
          "access to.",
          "Tap the \"+\" button in the Library panel header to add a model",
          "Add models you subscribe to (e.g. Claude, GPT-4, Gemini)",
          "Add models you have API keys for via Providers"}) {
        EXPECT_TRUE(shows(text)) << text;
    }
    press(Qt::Key_Return);
    EXPECT_TRUE(seen("hasSeenLibraryTip_v1"));
}

} // namespace
} // namespace varnhold::testing
