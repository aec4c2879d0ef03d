#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "settings/bot_editing.h"
#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct Sheets : ::testing::Test, ShownSheets {
    void raiseAlert(const std::string& text) {
        view->alertMsg = text;
        view->showAlert = true;
        view->changed();
    }
    void openTokenSheet(const BotConfig& bot) {
        view->tokenSheetBot = view->userBots.emplace_back(bot);
        view->changed();
    }
    void openPromptEditor(const BotConfig& bot) {
        view->editingBot = view->userBots.emplace_back(bot);
        view->changed();
    }
    [[nodiscard]] BotConfig lastOnDisk() const { return loadBots(constants).back(); }
};

TEST_F(Sheets, AreNotThereByThemselves) {
    show();
    EXPECT_EQ(model->sheets()->standing(), QString());
    EXPECT_FALSE(shows("Alert"));
}

TEST_F(Sheets, AnAlertShowsItsDataAsItStands) {
    show();
    raiseAlert("Auth required for <b>Family</b> & **co**.");
    const QQuickItem* text = named(QStringLiteral("Auth required for <b>Family</b> & **co**."));
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->property("text"), QStringLiteral("Auth required for <b>Family</b> & **co**."));
    EXPECT_EQ(text->property("textFormat").toInt(), int(Qt::PlainText));
    EXPECT_TRUE(shows("Alert"));
}

TEST_F(Sheets, AnAlertIsClosedByItsButtonByEnterAndByEscape) {
    show();
    const std::vector<std::function<void()>> ways{
        [this] { click("OK"); }, [this] { press(Qt::Key_Return); },
        [this] { press(Qt::Key_Enter); }, [this] { press(Qt::Key_Escape); }};
    for (const auto& close : ways) {
        raiseAlert("Something.");
        ASSERT_TRUE(shows("Alert"));
        close();
        EXPECT_FALSE(view->showAlert);
        EXPECT_FALSE(shows("Alert"));
    }
}

TEST_F(Sheets, FadeAsTheyGoAndTakeNothingMeanwhile) {
    show();
    const QImage free = page->grabFramebuffer();
    raiseAlert("Something.");
    const auto* overlays = page->rootObject()->findChild<QQuickItem*>(QStringLiteral("overlays"));
    ASSERT_TRUE(QTest::qWaitFor([overlays] { return overlays->property("settled").toBool(); }));
    press(Qt::Key_Escape);
    EXPECT_FALSE(overlays->property("settled").toBool());
    EXPECT_FALSE(shows("Alert")) << "only its picture stays";
    EXPECT_NE(page->grabFramebuffer(), free);
    const bool hints = view->showHints;
    click("Hints");
    EXPECT_NE(view->showHints, hints);
    ASSERT_TRUE(QTest::qWaitFor([overlays] { return overlays->property("settled").toBool(); }));
}

TEST_F(Sheets, AnAlertFollowsABotWithoutARole) {
    show();
    view->addBot();
    EXPECT_TRUE(shows("Please fill in both the Role and the Token fields."));
}

TEST_F(Sheets, AVeryLongAlertKeepsItsButtonInTheWindow) {
    show();
    std::string text;
    for (int i = 0; i < 4000; ++i) {
        text += "word ";
    }
    raiseAlert(text);
    click("OK");
    EXPECT_FALSE(view->showAlert);
}

TEST_F(Sheets, KeepThePageFromBeingClicked) {
    view->workerModels = {varnhold::testing::model("worker")};
    show();
    const QPoint reset = middleOf(named(QStringLiteral("Reset")));
    raiseAlert("Something.");
    QTest::mouseClick(page, Qt::LeftButton, {}, reset);
    EXPECT_THAT(view->workerModels, SizeIs(1));
    EXPECT_TRUE(view->showAlert);
}

TEST_F(Sheets, KeepTheKeyboardToThemselves) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    const QQuickItem* sheet = named(QStringLiteral("🤖 ops"));
    ASSERT_NE(sheet, nullptr);
    for (int i = 0; i < 8; ++i) {
        press(Qt::Key_Tab);
        EXPECT_TRUE(sheet->isAncestorOf(focused())) << focusedName();
    }
}

TEST_F(Sheets, GiveTheFocusBackToWhatHadIt) {
    show();
    focus("Reset");
    openTokenSheet(varnhold::testing::bot("ops"));
    EXPECT_EQ(focusedName(), "Telegram Token");
    press(Qt::Key_Escape);
    EXPECT_EQ(focusedName(), "Reset");
}

TEST_F(Sheets, StandOneAtATimeAndTheNextFollows) {
    show();
    focus("Reset");
    model->openManageCustomGroups();
    view->showWelcome = true;
    raiseAlert("Something.");
    EXPECT_EQ(model->sheets()->standing(), QStringLiteral("manageGroups"));
    EXPECT_FALSE(shows("Something."));
    press(Qt::Key_Escape);
    EXPECT_TRUE(shows("Something."));
    EXPECT_FALSE(shows("Welcome to Varnhold"));
    press(Qt::Key_Return);
    EXPECT_TRUE(shows("Welcome to Varnhold"));
    press(Qt::Key_Return);
    EXPECT_EQ(model->sheets()->standing(), QString());
    EXPECT_EQ(focusedName(), "Reset");
}

TEST_F(Sheets, TheToastComesWithASaveAndGoesByItself) {
    show();
    EXPECT_FALSE(shows("Preferences Saved"));
    view->save();
    ASSERT_TRUE(QTest::qWaitFor([this] { return shows("Preferences Saved"); }));
    platform.advance(999ms);
    EXPECT_TRUE(model->sheets()->toastShown());
    platform.advance(1ms);
    EXPECT_FALSE(model->sheets()->toastShown());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !shows("Preferences Saved"); }));
}

TEST_F(Sheets, ATokenIsSavedAsTypedTogetherWithItsService) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    type(QStringLiteral(" 1:a "));
    click("Slack");
    EXPECT_EQ(valueOf("Slack Token"), " 1:a ");
    click("Save");
    EXPECT_EQ(lastOnDisk().token, " 1:a ");
    EXPECT_EQ(lastOnDisk().service, BotService::slack);
    EXPECT_FALSE(view->tokenSheetBot);
    EXPECT_EQ(model->sheets()->standing(), QString());
    EXPECT_EQ(saves(), 2);
    EXPECT_THAT(platform.http.urls, IsEmpty());
}

TEST_F(Sheets, ATokenOfBlanksCannotBeSaved) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    EXPECT_FALSE(isEnabled("Save"));
    type(QStringLiteral("  "));
    EXPECT_FALSE(isEnabled("Save"));
    press(Qt::Key_Return);
    EXPECT_TRUE(view->tokenSheetBot);
    type(QStringLiteral("1:a"));
    EXPECT_TRUE(isEnabled("Save"));
    press(Qt::Key_Return);
    EXPECT_FALSE(view->tokenSheetBot);
    EXPECT_EQ(lastOnDisk().token, "  1:a");
}

TEST_F(Sheets, TheTokensHelpAndPatternFollowTheService) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    EXPECT_TRUE(shows("Get a token from @BotFather on Telegram. It is made of digits, a colon, "
                      "then letters and dashes."));
    EXPECT_EQ(valueOf("Telegram Token", "placeholder"), "digits:letters-and-dashes");
    click("Slack");
    EXPECT_TRUE(shows("Use a Slack Bot User OAuth token (starts with xoxb-) or Incoming Webhook "
                      "URL."));
    EXPECT_EQ(valueOf("Slack Token", "placeholder"), "xoxb-… or an Incoming Webhook URL");
}

TEST_F(Sheets, TheTokensSheetSaysServiceAndStaysWhereItIsAsThatChanges) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    const auto texts = page->rootObject()->findChildren<QQuickItem*>();
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(), [](const QQuickItem* item) {
        return item->property("text") == QStringLiteral("Service") && item->isVisible();
    }));
    const auto foot = [this] { return control("Save")->mapToScene({0, 0}); };
    static_cast<void>(page->grabFramebuffer());
    const QPointF before = foot();
    click("Slack");
    static_cast<void>(page->grabFramebuffer());
    EXPECT_EQ(foot(), before);
}

TEST_F(Sheets, GivingATokenUpLosesNothing) {
    BotConfig bot = varnhold::testing::bot("ops");
    bot.token = "1:a";
    show();
    openTokenSheet(bot);
    fillIn("Telegram Token", "2:b");
    click("Slack");
    click("Cancel");
    EXPECT_FALSE(view->tokenSheetBot);
    EXPECT_EQ(view->userBots.back(), bot);
    EXPECT_EQ(saves(), 0);
}

TEST_F(Sheets, ATokenSheetBeginsAnewEachTime) {
    show();
    openTokenSheet(varnhold::testing::bot("ops"));
    type(QStringLiteral("typed"));
    press(Qt::Key_Escape);
    openTokenSheet(varnhold::testing::bot("cto"));
    EXPECT_TRUE(shows("🤖 cto"));
    EXPECT_EQ(valueOf("Telegram Token"), "");
}

TEST_F(Sheets, APromptIsSavedAsTyped) {
    show();
    openPromptEditor(varnhold::testing::bot("ops"));
    EXPECT_EQ(focusedName(), "bot-specific prompt");
    type(QStringLiteral("Be"));
    press(Qt::Key_Return); // a new line, as in any text
    type(QStringLiteral("kind"));
    EXPECT_EQ(saves(), 0);
    click("Save Prompt");
    EXPECT_EQ(lastOnDisk().prompt, "Be\nkind");
    EXPECT_EQ(saves(), 1);
    EXPECT_FALSE(view->editingBot);
}

TEST_F(Sheets, AnEmptiedPromptIsStoredAsPresentAndEmpty) {
    BotConfig bot = varnhold::testing::bot("ops");
    bot.prompt = "Be kind";
    show();
    openPromptEditor(bot);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    click("Save Prompt");
    EXPECT_EQ(lastOnDisk().prompt, "");
}

TEST_F(Sheets, GivingAPromptUpLosesNothing) {
    BotConfig bot = varnhold::testing::bot("ops");
    bot.prompt = "Be kind";
    show();
    openPromptEditor(bot);
    type(QStringLiteral("Don't "));
    press(Qt::Key_Escape);
    EXPECT_FALSE(view->editingBot);
    EXPECT_EQ(view->userBots.back(), bot);
    EXPECT_EQ(saves(), 0);
}

} // namespace
} // namespace varnhold::testing
