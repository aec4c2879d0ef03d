#include "settings/bot_editing.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "window.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Property;
using ::testing::SizeIs;

void typeInForm(ModelSelectorView& view, const std::string& role, const std::string& token) {
    view.newBotRole = role;
    view.newBotToken = token;
}

TEST(AddBot, LabelsByTheRoleAndStartsOnTelegramEvenWithSlackChosen) {
    Window window;
    ModelSelectorView& view = *window.view;
    typeInForm(view, "ops", "1:a");
    view.newBotService = BotService::slack;
    view.addBot();
    const BotConfig expected{.icon = "🤖",
                             .title = "New Bot",
                             .token = "1:a",
                             .role = "ops",
                             .launchdLabel = opsLabel,
                             .service = BotService::telegram,
                             .prompt = "",
                             .isPaused = false,
                             .isSystem = false};
    EXPECT_EQ(view.userBots.back(), expected);
    EXPECT_EQ(view.userBots.back().keepaliveEnabled, std::nullopt);
    EXPECT_EQ(view.newBotService, BotService::slack);
    EXPECT_EQ(view.newBotRole + view.newBotToken, "");
    EXPECT_EQ(window.botsOnDisk().back(), expected);
    EXPECT_EQ(window.saves(), 1);
}

TEST(AddBot, AcceptsATokenOfBlanks) {
    Window window;
    typeInForm(*window.view, "ops", "  ");
    window.view->addBot();
    EXPECT_EQ(window.botsOnDisk().back().token, "  ");
}

TEST(AddBot, TakesTheRoleAsTyped) {
    Window window;
    typeInForm(*window.view, " My Role/é ", "t");
    window.view->addBot();
    EXPECT_EQ(window.view->userBots.back().role, " My Role/é ");
    EXPECT_EQ(window.view->userBots.back().launchdLabel, "com.ostrelleai. My Role/é .telegramd");
}

TEST(AddBot, AllowsASecondBotWithTheSameRole) {
    Window window;
    for (const char* token : {"1", "2"}) {
        typeInForm(*window.view, "ops", token);
        window.view->addBot();
    }
    EXPECT_THAT(window.botsOnDisk(), SizeIs(3));
    window.view->togglePauseBot(window.view->userBots[2]);
    EXPECT_TRUE(window.view->userBots[1].paused()); // the first with that label
    EXPECT_FALSE(window.view->userBots[2].paused());
}

TEST(AddBot, RefusesAnEmptyRoleOrTokenWithAnAlertAndChangesNothing) {
    for (const auto& [role, token] :
         std::vector<std::pair<std::string, std::string>>{{"", ""}, {"ops", ""}, {"", "t"}}) {
        Window window;
        typeInForm(*window.view, role, token);
        window.view->addBot();
        EXPECT_EQ(window.view->alertMsg, "Please fill in both the Role and the Token fields.");
        EXPECT_TRUE(window.view->showAlert);
        EXPECT_THAT(window.view->userBots, SizeIs(1));
        EXPECT_EQ(window.view->newBotRole, role);
        EXPECT_EQ(window.view->newBotToken, token);
        EXPECT_EQ(window.saves(), 0);
        EXPECT_THAT(window.platform.http.urls, IsEmpty());
    }
}

TEST(AddBot, AsksForAllNamesAndStoresThem) {
    Window window;
    typeInForm(*window.view, "ops", "1:a");
    window.view->addBot();
    ASSERT_THAT(window.platform.http.urls, SizeIs(1));
    window.platform.http.answer(0, R"({"result":{"first_name":"Ops"}})");
    window.platform.settle();
    EXPECT_EQ(window.view->userBots.back().title, "Ops");
    EXPECT_EQ(window.botsOnDisk().back().title, "Ops");
    EXPECT_EQ(window.saves(), 2);
}

TEST(AddBot, StartsNoAgent) {
    Window window;
    typeInForm(*window.view, "ops", "1:a");
    window.view->addBot();
    window.platform.settle();
    EXPECT_THAT(window.platform.children, IsEmpty());
}

TEST(FetchNames, LosesEditsMadeWhileTheRequestsWereUnderWay) {
    Window window;
    window.add(bot("ops")).token = "1";
    window.view->fetchNames();
    window.add(bot("late"));
    window.platform.http.answerAll("");
    window.platform.settle();
    EXPECT_THAT(window.view->userBots, SizeIs(2));
    EXPECT_THAT(window.botsOnDisk(), SizeIs(2));
}

TEST(FetchNames, DropsAnAnswerThatComesAfterTheRecordHasGone) {
    Window window;
    window.add(bot("ops")).token = "1";
    window.view->fetchNames();
    window.view.reset();
    window.platform.http.answerAll(R"({"result":{"first_name":"Ops"}})");
    window.platform.settle();
    EXPECT_FALSE(files::exists(window.constants.botsConfigFile));
}

TEST(FetchNames, SavesOnceEvenWhereNobodyIsAskedFor) {
    Window window;
    window.view->fetchNames();
    EXPECT_EQ(window.saves(), 0);
    window.platform.settle();
    EXPECT_EQ(window.saves(), 1);
}

TEST(PauseBot, OnAnAbsentChoiceStoresTrueAndThenFalse) {
    Window window;
    window.add(bot("ops"));
    window.row(opsLabel).onPause(bot("ops"));
    EXPECT_EQ(window.botsOnDisk().back().isPaused, true);
    window.row(opsLabel).onPause(bot("ops"));
    EXPECT_EQ(window.botsOnDisk().back().isPaused, false);
    EXPECT_THAT(window.platform.children, IsEmpty());
}

TEST(PauseBot, ThatHasGoneDoesNothing) {
    Window window;
    window.view->togglePauseBot(bot("nobody"));
    EXPECT_EQ(window.saves(), 0);
}

TEST(RemoveBot, OfTheSystemDoesNothing) {
    Window window;
    window.view->removeBot(window.view->userBots.front());
    EXPECT_THAT(window.view->userBots, SizeIs(1));
    EXPECT_EQ(window.saves(), 0);
}

TEST(RemoveBot, TakesEveryRecordWithTheLabel) {
    Window window;
    window.add(bot("ops"));
    window.add(bot("cto"));
    window.add(bot("ops"));
    window.view->removeBot(window.view->userBots[1]);
    EXPECT_THAT(window.botsOnDisk(), SizeIs(2));
    EXPECT_EQ(window.botsOnDisk().back().role, "cto");
    EXPECT_EQ(window.saves(), 1);
}

TEST(RemoveBot, ThatRunsLeavesItsJobLoadedAndItsPropertyListOnDisk) {
    Window window;
    window.add(bot("ops"));
    const std::string list = window.constants.launchAgentsDir + "/" + opsLabel + ".plist";
    window.write(list, "<plist/>");
    window.row(opsLabel).onRemove(bot("ops"));
    window.platform.settle();
    EXPECT_THAT(window.platform.children, IsEmpty());
    EXPECT_EQ(window.read(list), "<plist/>");
    EXPECT_THAT(botRolesInOrder(window.constants), ElementsAre("governor"));
}

TEST(RemoveBot, KeepsItSelected) {
    Window window;
    selectBot(*window.view, window.add(bot("ops")));
    window.view->removeBot(bot("ops"));
    ASSERT_TRUE(window.view->selectedBot);
    EXPECT_EQ(window.view->selectedBot->role, "ops");
}

TEST(SwitchService, ChangesTheServiceAlone) {
    Window window;
    BotConfig expected = window.add(bot("ops"));
    window.row(opsLabel).onSwitchService(expected, BotService::slack);
    expected.service = BotService::slack;
    EXPECT_EQ(window.botsOnDisk().back(), expected);
    EXPECT_EQ(window.saves(), 1);
    switchService(*window.view, bot("nobody"), BotService::slack);
    EXPECT_EQ(window.saves(), 1);
}

TEST(Keepalive, OfOneBotWithoutAChoiceStoresFalseAndThenTrue) {
    Window window;
    window.add(bot("ops"));
    window.row(opsLabel).onToggleKeepalive(bot("ops"));
    EXPECT_EQ(window.botsOnDisk().back().keepaliveEnabled, false);
    window.row(opsLabel).onToggleKeepalive(bot("ops"));
    EXPECT_EQ(window.botsOnDisk().back().keepaliveEnabled, true);
    toggleKeepalive(*window.view, bot("nobody"));
    EXPECT_EQ(window.saves(), 2);
}

TEST(KeepaliveForAll, OfNobodyIsOff) {
    EXPECT_FALSE(allKeptAlive({}));
    EXPECT_EQ(keepaliveSwitchForAll({}).symbol, "bolt.slash");
    EXPECT_EQ(keepaliveSwitchForAll({}).help,
              "Keepalive OFF for some/all bots — click to enable for all.");
}

TEST(KeepaliveForAll, WithOneOffOfFiveTurnsAllFiveOnWithOneSave) {
    Window window;
    for (const char* role : {"a", "b", "c", "d"}) {
        window.add(bot(role));
    }
    window.view->userBots[2].keepaliveEnabled = false;
    EXPECT_EQ(keepaliveSwitchForAll(window.view->userBots).symbol, "bolt.slash");
    toggleKeepaliveForAll(*window.view);
    EXPECT_THAT(window.botsOnDisk(), SizeIs(5));
    EXPECT_THAT(window.botsOnDisk(),
                Each(::testing::Field(&BotConfig::keepaliveEnabled, std::optional(true))));
    EXPECT_EQ(window.saves(), 1);
}

TEST(KeepaliveForAll, WithAllOnTurnsAllOffTheGovernorIncluded) {
    Window window;
    window.add(bot("ops"));
    EXPECT_TRUE(keepaliveSwitchForAll(window.view->userBots).isOn);
    EXPECT_EQ(keepaliveSwitchForAll(window.view->userBots).help,
              "Keepalive ON for all bots — click to disable for all (saves tokens).");
    toggleKeepaliveForAll(*window.view);
    EXPECT_THAT(window.botsOnDisk(),
                Each(::testing::Field(&BotConfig::keepaliveEnabled, std::optional(false))));
}

TEST(KeepaliveSwitch, OfOneBotTellsWhatAClickDoes) {
    BotConfig one = bot("ops");
    EXPECT_EQ(keepaliveSwitch(one).symbol, "bolt.fill");
    EXPECT_EQ(keepaliveSwitch(one).help,
              "Keepalive ON — cache kept warm (uses tokens). Click to disable.");
    one.keepaliveEnabled = false;
    EXPECT_EQ(keepaliveSwitch(one).symbol, "bolt.slash");
    EXPECT_EQ(keepaliveSwitch(one).help,
              "Keepalive OFF — saves tokens, cache may go cold. Click to enable.");
}

TEST(PromptPanel, SavesEachChangeOfItsTextWithTheSelectedBot) {
    Window window;
    selectBot(*window.view, window.add(bot("ops")));
    const long before = window.saves();
    for (const char* text : {"B", "Be", "Be "}) {
        setSelectedBotPrompt(*window.view, text);
    }
    EXPECT_EQ(window.saves(), before + 3);
    EXPECT_EQ(window.botsOnDisk().back().prompt, "Be ");
    setSelectedBotPrompt(*window.view, "Be ");
    EXPECT_EQ(window.saves(), before + 3);
}

TEST(PromptPanel, ShowsTheSelectedBotsPromptAndLeavesTheOneBeforeAlone) {
    Window window;
    BotConfig first = bot("first");
    first.prompt = "one";
    BotConfig second = bot("second");
    second.prompt = "two";
    window.add(first);
    window.add(second);
    window.row(first.launchdLabel).onSelect();
    EXPECT_EQ(window.view->selectedBotPrompt, "one");
    window.row(second.launchdLabel).onSelect();
    EXPECT_EQ(window.view->selectedBotPrompt, "two");
    EXPECT_EQ(window.botsOnDisk()[1], first);
    EXPECT_EQ(window.botsOnDisk()[2], second);
    EXPECT_EQ(window.saves(), 2);
}

TEST(PromptPanel, SelectingABotWithoutAPromptStoresAnEmptyOneAfterATextOfAnother) {
    Window window;
    window.add(bot("ops"));
    window.row(opsLabel).onSelect(); // the governor with its long prompt was selected before
    EXPECT_EQ(window.botsOnDisk().back().prompt, "");
    EXPECT_EQ(window.saves(), 1);
}

TEST(PromptPanel, SelectingABotWithTheSameTextSavesNothing) {
    Window window;
    window.view->selectedBotPrompt.clear();
    window.add(bot("ops"));
    window.row(opsLabel).onSelect();
    EXPECT_EQ(window.saves(), 0);
    EXPECT_EQ(window.view->userBots.back().prompt, std::nullopt);
    EXPECT_TRUE(window.row(opsLabel).isSelected);
    EXPECT_FALSE(window.row("com.ostrelleai.governor").isSelected);
}

TEST(PromptPanel, WithoutASelectedBotKeepsItsTextToItself) {
    Window window;
    window.view->selectedBot.reset();
    setSelectedBotPrompt(*window.view, "text");
    EXPECT_EQ(window.view->selectedBotPrompt, "text");
    EXPECT_EQ(window.saves(), 0);
    EXPECT_EQ(promptPanelSubject(*window.view), std::nullopt);
}

TEST(PromptPanel, NamesTheBotAsItWasWhenItWasSelected) {
    Window window;
    EXPECT_EQ(promptPanelSubject(*window.view), "— ⚖️ Governor AI");
    window.view->userBots.front().title = "Renamed";
    EXPECT_EQ(promptPanelSubject(*window.view), "— ⚖️ Governor AI");
}

} // namespace
} // namespace varnhold::testing
