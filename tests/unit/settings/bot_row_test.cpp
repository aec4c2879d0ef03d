#include "settings/bot_row.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "settings/bot_sheets.h"
#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

BotConfig ops(const std::string& token = "1:a") {
    return bot("ops", {.token = token});
}

std::vector<std::string> titles(const std::vector<BotMenuItem>& menu) {
    std::vector<std::string> all;
    for (const BotMenuItem& item : menu) {
        all.push_back(item.kind == BotMenuItem::Kind::divider ? "-"
                                                              : item.title + " " + item.symbol);
    }
    return all;
}

void choose(const std::vector<BotMenuItem>& menu, const std::string& title) {
    const auto found = std::find_if(menu.begin(), menu.end(),
                                    [&](const BotMenuItem& item) { return item.title == title; });
    ASSERT_NE(found, menu.end()) << title;
    found->perform();
}

TEST(BotRow, IsSelectedByItsLabelWhateverElseIsAlike) {
    Window window;
    BotConfig twin = ops();
    twin.launchdLabel = "com.ostrelleai.twin.telegramd";
    window.add(ops());
    window.add(twin);
    window.view->selectedBot = twin;
    window.view->selectedBot->title = "Renamed meanwhile";
    std::vector<std::string> selected;
    for (const BotRow& row : botRows(*window.view)) {
        if (row.isSelected) {
            selected.push_back(row.bot.launchdLabel);
        }
    }
    EXPECT_THAT(selected, ElementsAre(twin.launchdLabel));
}

TEST(BotMenu, HoldsItsItemsInOrder) {
    Window window;
    window.add(ops());
    EXPECT_THAT(titles(botMenu(window.row(opsLabel), window.context())),
                ElementsAre("Pause pause.fill", "Restart arrow.clockwise", "Stop stop.fill",
                            "Update Token… key.fill", "-", "Connection Service ",
                            "Telegram checkmark", "Slack ", "-", "Delete trash"));
}

TEST(BotMenu, OfAPausedBotOffersToResume) {
    Window window;
    window.add(ops()).isPaused = true;
    const auto menu = botMenu(window.row(opsLabel), window.context());
    EXPECT_EQ(titles(menu).front(), "Resume play.fill");
    choose(menu, "Resume");
    EXPECT_EQ(window.botsOnDisk().back().isPaused, false);
}

TEST(BotMenu, OfASystemBotShowsNoDelete) {
    Window window;
    const auto menu = botMenu(window.row("com.ostrelleai.governor"), window.context());
    EXPECT_THAT(titles(menu), SizeIs(8));
    EXPECT_THAT(titles(menu), ::testing::Not(::testing::Contains("Delete trash")));
}

TEST(BotMenu, DeletesInDestructiveStyle) {
    Window window;
    window.add(ops());
    const auto menu = botMenu(window.row(opsLabel), window.context());
    EXPECT_TRUE(menu.back().destructive);
    choose(menu, "Delete");
    EXPECT_THAT(window.botsOnDisk(), SizeIs(1));
}

TEST(BotMenu, RestartsAndStopsTheAgentWithoutWaitingOrSaving) {
    Window window;
    window.add(ops());
    const auto menu = botMenu(window.row(opsLabel), window.context());
    choose(menu, "Restart");
    choose(menu, "Stop");
    EXPECT_THAT(window.platform.record,
                ElementsAre("start launchctl kickstart -k gui/501/com.ostrelleai.ops.telegramd",
                            "start launchctl stop com.ostrelleai.ops.telegramd"));
    EXPECT_EQ(window.saves(), 0);
}

TEST(BotMenu, SwitchesTheService) {
    Window window;
    window.add(ops());
    choose(botMenu(window.row(opsLabel), window.context()), "Slack");
    EXPECT_EQ(window.botsOnDisk().back().service, BotService::slack);
    EXPECT_EQ(titles(botMenu(window.row(opsLabel), window.context()))[7], "Slack checkmark");
}

TEST(BotRow, WithoutATokenOffersConnectAndSetTokenWithTheSameEffect) {
    Window window;
    window.add(ops(""));
    const BotRow row = window.row(opsLabel);
    EXPECT_TRUE(offersConnection(row.bot));
    row.onConnect(row.bot);
    EXPECT_EQ(window.view->tokenSheetBot, row.bot);
    window.view->tokenSheetBot.reset();
    choose(botMenu(row, window.context()), "Set Token…");
    EXPECT_EQ(window.view->tokenSheetBot, row.bot);
    EXPECT_FALSE(offersConnection(ops(" ")));
}

TEST(BotRow, OpensThePromptEditorThroughItsOneCallback) {
    Window window;
    window.add(ops());
    EXPECT_FALSE(promptEditor(*window.view).has_value());
    window.row(opsLabel).onEdit(ops());
    EXPECT_TRUE(promptEditor(*window.view).has_value());
}

TEST(BotRow, HasAKeepaliveCallbackThatDoesNothingByDefault) {
    BotRow row;
    row.onToggleKeepalive(row.bot);
    EXPECT_EQ(row.bot, BotConfig{});
}

TEST(BotPresence, IsPausedBeforeAllElse) {
    BotConfig one = ops();
    EXPECT_EQ(label(presenceOf(one, true)), "Online");
    EXPECT_EQ(label(presenceOf(one, false)), "Offline");
    one.isPaused = true;
    EXPECT_EQ(label(presenceOf(one, true)), "Paused");
}

TEST(BotColor, IsThatOfTheBotsBarByItsPlaceInTheFile) {
    Window window;
    window.write(window.constants.botsConfigFile, encodeBots({bot("a"), bot("b"), bot("c")}));
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "a"), 0);
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "b"), 0.415);
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "c"), 0.83);
    EXPECT_EQ(botDisplayColor(window.constants, "c"), (BotColor{0.83, 0.8, 0.95}));
}

TEST(BotColor, OfAnUnknownRoleIsTheFirstOnesAndOfTwoWithOneRoleTheFirsts) {
    Window window;
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "a"), 0); // no file at all
    window.write(window.constants.botsConfigFile, encodeBots({bot("a"), bot("b"), bot("b")}));
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "nobody"), 0);
    EXPECT_DOUBLE_EQ(botColorHue(window.constants, "b"), 0.415);
}

TEST(BotColor, OfAWholeFleetIsThatOfEachBot) {
    Window window;
    window.write(window.constants.botsConfigFile, encodeBots({bot("a"), bot("b"), bot("c")}));
    EXPECT_THAT(botColorHues(window.constants, {bot("c"), bot("nobody"), bot("b"), bot("c")}),
                ::testing::ElementsAre(0.83, 0, 0.415, 0.83));
    EXPECT_EQ(botDisplayColor(0.83), botDisplayColor(window.constants, "c"));
}

TEST(TokenSheet, RefusesATokenOfBlanksThatTheFormAccepts) {
    Window window;
    window.view->tokenSheetBot = ops(" \t ");
    EXPECT_FALSE(tokenSheet(*window.view)->canSave());
    window.view->tokenSheetBot->token = "";
    EXPECT_FALSE(tokenSheet(*window.view)->canSave());
    window.view->tokenSheetBot->token = " 1 ";
    EXPECT_TRUE(tokenSheet(*window.view)->canSave());
    window.view->tokenSheetBot->token = "\n\r\n";
    EXPECT_TRUE(tokenSheet(*window.view)->canSave()) << "line breaks are no blanks";
}

TEST(TokenSheet, StoresTheTokenUntrimmedAndTheServiceAndSavesTwice) {
    Window window;
    window.add(ops());
    window.row(opsLabel).onConnect(ops());
    BotTokenSheet sheet = *tokenSheet(*window.view);
    sheet.bot.token = " 2:b ";
    sheet.bot.service = BotService::slack;
    EXPECT_EQ(window.view->userBots.back(), ops()); // a copy until it is saved
    sheet.onSave(sheet.bot);
    EXPECT_EQ(window.botsOnDisk().back(), sheet.bot);
    EXPECT_EQ(window.saves(), 2);
    EXPECT_EQ(window.view->tokenSheetBot, std::nullopt);
    EXPECT_THAT(window.platform.http.urls, ::testing::IsEmpty());
}

TEST(TokenSheet, ClosesWithoutASaveOnCancelOrWhereTheBotHasGone) {
    Window window;
    window.view->tokenSheetBot = ops();
    bool isSeenToClose = false;
    window.view->observe(
        [&](Animation) { isSeenToClose = !window.view->tokenSheetBot.has_value(); });
    tokenSheet(*window.view)->onCancel();
    EXPECT_EQ(window.view->tokenSheetBot, std::nullopt);
    EXPECT_TRUE(isSeenToClose);
    window.view->tokenSheetBot = ops();
    const BotTokenSheet sheet = *tokenSheet(*window.view);
    sheet.onSave(sheet.bot);
    EXPECT_EQ(window.view->tokenSheetBot, std::nullopt);
    EXPECT_EQ(window.saves(), 0);
    EXPECT_THAT(window.view->userBots, SizeIs(1));
}

TEST(TokenSheet, NamesTheTokenByTheServiceChosenInIt) {
    Window window;
    window.view->tokenSheetBot = ops();
    BotTokenSheet sheet = *tokenSheet(*window.view);
    EXPECT_EQ(sheet.heading(), "🤖 ops");
    EXPECT_EQ(sheet.tokenLabel(), "Telegram Token");
    EXPECT_THAT(sheet.help(), ::testing::StartsWith("Get a token from @BotFather on Telegram."));
    EXPECT_EQ(sheet.tokenPrompt(), "digits:letters-and-dashes");
    sheet.bot.service = BotService::slack;
    EXPECT_EQ(sheet.tokenLabel(), "Slack Token");
    EXPECT_EQ(sheet.help(), "Use a Slack Bot User OAuth token (starts with xoxb-) or Incoming "
                            "Webhook URL.");
    EXPECT_EQ(sheet.tokenPrompt(), "xoxb-… or an Incoming Webhook URL");
}

TEST(PromptEditor, StoresAnEmptiedPromptAsPresentAndEmpty) {
    Window window;
    BotConfig record = ops();
    record.prompt = "old";
    window.add(record);
    window.view->editingBot = record;
    BotPromptEditor editor = *promptEditor(*window.view);
    EXPECT_EQ(editor.text(), "old");
    editor.setText("");
    editor.onSave(editor.bot);
    EXPECT_EQ(window.botsOnDisk().back().prompt, "");
    EXPECT_EQ(window.saves(), 1);
    EXPECT_EQ(window.view->editingBot, std::nullopt);
}

TEST(PromptEditor, LosesNothingOnCancel) {
    Window window;
    window.add(ops());
    window.view->editingBot = ops();
    BotPromptEditor editor = *promptEditor(*window.view);
    EXPECT_EQ(editor.text(), "");
    editor.setText("typed");
    editor.onCancel();
    EXPECT_EQ(window.view->editingBot, std::nullopt);
    EXPECT_EQ(window.view->userBots.back(), ops());
    EXPECT_EQ(window.saves(), 0);
}

} // namespace
} // namespace varnhold::testing
