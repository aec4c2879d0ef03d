#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

struct WholeWindow : ::testing::Test, ShownSheets {
    [[nodiscard]] QQuickItem* part(const char* name) const {
        return page->rootObject()->findChild<QQuickItem*>(QString::fromUtf8(name));
    }
};

TEST_F(WholeWindow, HasAllItsHeadings) {
    show();
    for (const char* title :
         {"Bots", "Library", "Providers", "Master Prompt Injection", "Bot Prompt", "Reset"}) {
        EXPECT_TRUE(shows(title)) << title;
    }
}

TEST_F(WholeWindow, HasATopBlockOfItsHeightOverTheChains) {
    show();
    const QQuickItem* top = part("topBlock");
    ASSERT_NE(top, nullptr);
    EXPECT_EQ(top->height(), 420);
    EXPECT_EQ(top->mapToScene({0, 0}), part("rightPane")->mapToScene({0, 0}));
    EXPECT_EQ(top->width(), part("rightPane")->width());
}

TEST_F(WholeWindow, WithAnEmptyLibraryShowsTheLocalToolsAlone) {
    show();
    EXPECT_TRUE(shows("Local Tools"));
    EXPECT_TRUE(shows("Whisper (transcription, free/local)"));
    EXPECT_TRUE(shows("say (voice reply, free/local)"));
    for (const char* title : {"Direct", "Ollama", "Cerebras", "OpenRouter"}) {
        EXPECT_FALSE(shows(title)) << title;
    }
}

TEST_F(WholeWindow, HintsGoAndComeWithTheirSwitchAndNothingElseChanges) {
    fill(*view);
    view->showHints = true;
    show();
    const std::vector<const char*> hints{
        "Your Telegram AI agents — each bot is a separate assistant",
        "All available AI models from your connected providers — drag them into chains",
        "Connect your AI accounts — sign in or paste an API key to unlock each provider's models",
        "Injected into every bot's system prompt — use it to define your identity, values, and "
        "global rules",
        "· Additional instructions specific to the selected bot's role"};
    for (const char* hint : hints) {
        EXPECT_TRUE(shows(hint)) << hint;
    }
    click("Hide hints");
    EXPECT_FALSE(view->showHints);
    for (const char* hint : hints) {
        EXPECT_FALSE(shows(hint)) << hint;
    }
    EXPECT_EQ(saves(), 0);
    click("Show hints");
    EXPECT_TRUE(shows(hints.front()));
}

TEST_F(WholeWindow, TheLibrarysPlusOpensTheForm) {
    show();
    focus("Add a model to the library");
    press(Qt::Key_Space);
    EXPECT_TRUE(view->showAddModelSheet);
    EXPECT_TRUE(shows("Add Model to Library"));
    press(Qt::Key_Escape);
    EXPECT_EQ(focusedName(), "Add a model to the library");
}

TEST_F(WholeWindow, ABotWithoutATokenLeadsToItsSheetAndBack) {
    view->userBots = {varnhold::testing::bot("ops")};
    show();
    click("Connect");
    ASSERT_TRUE(view->tokenSheetBot);
    type(QStringLiteral("1:a"));
    press(Qt::Key_Return);
    EXPECT_EQ(loadBots(constants).front().token, "1:a");
    EXPECT_FALSE(shows("Connect"));
}

TEST_F(WholeWindow, AddingABotWithoutItsTokenRaisesTheAlert) {
    show();
    fillIn("Role", "ops");
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    press(Qt::Key_Space);
    EXPECT_TRUE(view->showAlert);
    EXPECT_TRUE(shows("Please fill in both the Role and the Token fields."));
    press(Qt::Key_Return);
    EXPECT_FALSE(view->showAlert);
    EXPECT_EQ(valueOf("Role"), "ops");
}

} // namespace
} // namespace varnhold::testing
