#include <gmock/gmock.h>

#include "settings/bot_editing.h"
#include "shown_columns.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

QString operator""_q(const char* text, std::size_t length) {
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

// The governor, ops with a token, and dev without one.
struct Fleet : ShownColumns {
    Fleet() {
        view->userBots.push_back(bot("ops"));
        view->userBots.push_back(bot("dev"));
        view->userBots[1].token = "1:a";
        view->userBots[1].prompt = "Watch.";
        view->save();
    }

    [[nodiscard]] QQuickItem* row(const QString& name) const {
        return named(name, QAccessible::ListItem);
    }
    [[nodiscard]] QQuickItem* inRow(const QString& name, const QString& control) const {
        return named(row(name), control);
    }
    void openMenu(const QString& name) {
        click(inRow(name, "Actions for "_q + name.section(QChar(32), 1)));
        settle();
    }
};

TEST(BotsBlock, ShowsARowForEachBotWithItsNameAndState) {
    Fleet fleet;
    fleet.running = {"com.ostrelleai.ops.telegramd"};
    fleet.show();
    ASSERT_NE(fleet.row("🤖 ops"_q), nullptr);
    EXPECT_EQ(spoken(fleet.row("🤖 ops"_q), QAccessible::Description), "Online, ops, Telegram"_q);
    EXPECT_EQ(spoken(fleet.row("🤖 dev"_q), QAccessible::Description),
              "Offline, dev, Not connected"_q);
    ASSERT_NE(fleet.row("⚖️ Governor AI"_q), nullptr);
    EXPECT_NE(fleet.inRow("🤖 ops"_q, "Online"_q), nullptr); // the dot
}

TEST(BotsBlock, SelectsABotByAPressAnywhereOnItsRow) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow("🤖 dev"_q);
    EXPECT_EQ(fleet.view->selectedBot->role, "dev");
    QTest::mouseClick(fleet.page, Qt::LeftButton, {},
                      fleet.row("🤖 ops"_q)->mapToScene({30, 16}).toPoint()); // on its name
    EXPECT_EQ(fleet.view->selectedBot->role, "ops");
    EXPECT_EQ(fleet.view->selectedBotPrompt, "Watch.");
    EXPECT_TRUE(fleet.row("🤖 ops"_q)->property("isSelected").toBool());
    EXPECT_FALSE(fleet.row("🤖 dev"_q)->property("isSelected").toBool());
}

TEST(BotsBlock, LeavesTheSelectionAloneWhenAControlOfTheRowIsPressed) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow("🤖 dev"_q);
    fleet.click(fleet.inRow("🤖 ops"_q,
                            "Keepalive ON — cache kept warm (uses tokens). Click to disable."_q));
    EXPECT_EQ(fleet.view->selectedBot->role, "dev");
    EXPECT_EQ(fleet.botsOnDisk()[1].keepaliveEnabled, false);
    EXPECT_NE(fleet.inRow("🤖 ops"_q,
                          "Keepalive OFF — saves tokens, cache may go cold. Click to enable."_q),
              nullptr);
}

TEST(BotsBlock, SwitchesKeepaliveForAllOnUnlessAllAreOn) {
    Fleet fleet;
    fleet.view->userBots[1].keepaliveEnabled = false;
    fleet.show();
    fleet.click("Keepalive OFF for some/all bots — click to enable for all."_q);
    for (const BotConfig& each : fleet.botsOnDisk()) {
        EXPECT_EQ(each.keepaliveEnabled, true);
    }
    fleet.click("Keepalive ON for all bots — click to disable for all (saves tokens)."_q);
    for (const BotConfig& each : fleet.botsOnDisk()) {
        EXPECT_EQ(each.keepaliveEnabled, false);
    }
}

TEST(BotsBlock, AddsTheBotThatWasTyped) {
    Fleet fleet;
    fleet.show();
    fleet.click("Role"_q);
    fleet.type("hr"_q);
    fleet.press(Qt::Key_Tab);
    fleet.type("2:b"_q);
    fleet.click("Add bot"_q);
    EXPECT_EQ(fleet.botsOnDisk().back().launchdLabel, "com.ostrelleai.hr.telegramd");
    EXPECT_EQ(fleet.botsOnDisk().back().token, "2:b");
    EXPECT_EQ(fleet.named("Role"_q)->property("text"), QVariant(QString()));
    EXPECT_EQ(fleet.named("Token"_q)->property("text"), QVariant(QString()));
    fleet.settle();
    EXPECT_NE(fleet.row("🤖 New Bot"_q), nullptr);
}

TEST(BotsBlock, BeginsABotOnTelegramAlsoWhereSlackWasPicked) {
    Fleet fleet;
    fleet.show();
    fleet.named("Service"_q)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_Down);
    EXPECT_EQ(fleet.view->newBotService, BotService::slack);
    fleet.click("Role"_q);
    fleet.type("hr"_q);
    fleet.press(Qt::Key_Return); // on to the token
    fleet.type(" "_q);
    fleet.press(Qt::Key_Return);
    EXPECT_EQ(fleet.botsOnDisk().back().role, "hr");
    EXPECT_EQ(fleet.botsOnDisk().back().token, " ");
    EXPECT_EQ(fleet.botsOnDisk().back().service, BotService::telegram);
    EXPECT_EQ(fleet.named("Service"_q)->property("current"), QVariant("Slack"_q));
}

TEST(BotsBlock, AsksForWhatIsMissing) {
    Fleet fleet;
    fleet.show();
    fleet.click("Add bot"_q);
    EXPECT_TRUE(fleet.view->showAlert);
    EXPECT_EQ(fleet.view->alertMsg, "Please fill in both the Role and the Token fields.");
    EXPECT_THAT(fleet.botsOnDisk(), SizeIs(3));
}

TEST(BotsBlock, OffersToConnectABotWithoutAToken) {
    Fleet fleet;
    fleet.show();
    EXPECT_EQ(fleet.inRow("🤖 ops"_q, "Connect"_q), nullptr);
    EXPECT_NE(fleet.inRow("🤖 ops"_q, "Telegram"_q), nullptr);
    fleet.click(fleet.inRow("🤖 dev"_q, "Connect"_q));
    EXPECT_EQ(fleet.view->tokenSheetBot->role, "dev");
    fleet.press(Qt::Key_Escape);
    EXPECT_FALSE(fleet.view->tokenSheetBot);
    fleet.settle();
    fleet.openMenu("🤖 dev"_q);
    fleet.chooseFromMenu("Set Token…"_q);
    EXPECT_EQ(fleet.view->tokenSheetBot->role, "dev");
}

TEST(BotsBlock, PausesRestartsAndStopsFromTheMenu) {
    Fleet fleet;
    fleet.show();
    fleet.openMenu("🤖 ops"_q);
    fleet.chooseFromMenu("Pause"_q);
    EXPECT_EQ(fleet.botsOnDisk()[1].isPaused, true);
    EXPECT_NE(fleet.inRow("🤖 ops"_q, "Paused"_q), nullptr);
    fleet.platform.children.clear();
    fleet.openMenu("🤖 ops"_q);
    fleet.chooseFromMenu("Restart"_q);
    fleet.openMenu("🤖 ops"_q);
    fleet.chooseFromMenu("Stop"_q);
    EXPECT_THAT(fleet.platform.commandLines(),
                ElementsAre("launchctl kickstart -k gui/501/com.ostrelleai.ops.telegramd",
                            "launchctl stop com.ostrelleai.ops.telegramd"));
    fleet.openMenu("🤖 ops"_q);
    fleet.chooseFromMenu("Resume"_q);
    EXPECT_EQ(fleet.botsOnDisk()[1].isPaused, false);
}

TEST(BotsBlock, DeletesABotButNeverOneOfTheSystem) {
    Fleet fleet;
    fleet.show();
    fleet.openMenu("⚖️ Governor AI"_q);
    EXPECT_NE(fleet.named("Restart"_q, QAccessible::MenuItem), nullptr);
    EXPECT_EQ(fleet.named("Delete"_q, QAccessible::MenuItem), nullptr);
    fleet.press(Qt::Key_Escape);
    fleet.settle();
    fleet.openMenu("🤖 ops"_q);
    fleet.chooseFromMenu("Delete"_q);
    EXPECT_THAT(fleet.botsOnDisk(), SizeIs(2));
    EXPECT_EQ(fleet.row("🤖 ops"_q), nullptr);
}

TEST(BotsBlock, SwitchesTheServiceFromTheMenu) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow("🤖 ops"_q, Qt::RightButton);
    fleet.chooseFromMenu("Slack"_q);
    EXPECT_EQ(fleet.botsOnDisk()[1].service, BotService::slack);
    EXPECT_EQ(fleet.botsOnDisk()[1].launchdLabel, "com.ostrelleai.ops.telegramd");
    EXPECT_NE(fleet.inRow("🤖 ops"_q, "Slack"_q), nullptr);
}

TEST(BotsBlock, OpensTheMenuOfTheRowByKeys) {
    Fleet fleet;
    fleet.show();
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Menu, Qt::KeyboardModifiers()},
          std::pair{Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier)}}) {
        fleet.row("🤖 ops"_q)->forceActiveFocus(Qt::TabFocusReason);
        fleet.press(key, modifiers);
        fleet.settle();
        EXPECT_NE(fleet.named("Update Token…"_q, QAccessible::MenuItem), nullptr);
        fleet.press(Qt::Key_Escape);
        fleet.settle();
        EXPECT_EQ(fleet.named("Update Token…"_q, QAccessible::MenuItem), nullptr);
    }
}

TEST(BotsBlock, GoesFromRowToRowByArrowsAndSelectsByReturn) {
    Fleet fleet;
    fleet.show();
    fleet.named("Add bot"_q)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_Tab);
    EXPECT_EQ(fleet.focused(), fleet.row("⚖️ Governor AI"_q));
    fleet.press(Qt::Key_Down);
    fleet.press(Qt::Key_Down);
    EXPECT_EQ(fleet.focused(), fleet.row("🤖 dev"_q));
    fleet.press(Qt::Key_Down); // there is no further
    EXPECT_EQ(fleet.focused(), fleet.row("🤖 dev"_q));
    fleet.press(Qt::Key_Up);
    fleet.press(Qt::Key_Return);
    EXPECT_EQ(fleet.view->selectedBot->role, "ops");
    fleet.press(Qt::Key_Tab);
    EXPECT_EQ(spoken(fleet.focused(), QAccessible::Name),
              "Keepalive ON — cache kept warm (uses tokens). Click to disable."_q);
}

TEST(BotsBlock, CarriesTheLabelToWhereBotsAreTaken) {
    Fleet fleet;
    fleet.show();
    fleet.row("🤖 ops"_q)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_Space);
    fleet.press(Qt::Key_Space);
    fleet.settle();
    ASSERT_THAT(fleet.view->chainBotAssignments, SizeIs(1));
    EXPECT_THAT(fleet.view->chainBotAssignments.begin()->second,
                ElementsAre("com.ostrelleai.ops.telegramd"));
}

TEST(BotsBlock, ShowsNamesAsTheyStand) {
    Fleet fleet;
    fleet.view->userBots[1].title = "Ops & <b>Build</b>";
    fleet.view->userBots[2].title = std::string(200, 'x');
    fleet.show(260);
    ASSERT_NE(fleet.row("🤖 Ops & <b>Build</b>"_q), nullptr);
    QQuickItem* longOne = fleet.row("🤖 "_q + QString(200, u'x'));
    ASSERT_NE(longOne, nullptr);
    QQuickItem* menu = ShownSettings::named(longOne, "Actions for "_q + QString(200, u'x'));
    EXPECT_LE(menu->mapToItem(longOne, QPointF(menu->width(), 0)).x(), longOne->width());
}

TEST(BotsBlock, AsksOnlyAfterAgentsWhoseRowsAreInSight) {
    Fleet fleet;
    for (int i = 0; i < 197; ++i) {
        fleet.view->userBots.push_back(bot("b" + std::to_string(i)));
    }
    fleet.show();
    const auto asked = fleet.platform.children.size();
    EXPECT_GT(asked, 5U);
    EXPECT_LT(asked, 40U);
    fleet.row("⚖️ Governor AI"_q)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_End);
    fleet.settle();
    EXPECT_EQ(fleet.focused(), fleet.row("🤖 b196"_q));
    EXPECT_THAT(fleet.platform.commandLines(),
                Contains("launchctl list com.ostrelleai.b196.telegramd"));
    EXPECT_EQ(fleet.row("🤖 ops"_q), nullptr);
}

TEST(BotsBlock, AsksAgainEveryFifteenSecondsUntilTheRowGoes) {
    Fleet fleet;
    fleet.show();
    EXPECT_THAT(fleet.platform.children, SizeIs(3));
    fleet.platform.advance(15s);
    fleet.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(6));
    fleet.view->removeBot(fleet.view->userBots[1]);
    fleet.settle();
    fleet.platform.children.clear();
    fleet.platform.advance(15s);
    fleet.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(2));
}

TEST(BotsBlock, AsksNothingWhileTheWindowIsHidden) {
    Fleet fleet;
    fleet.show();
    fleet.window.hide();
    fleet.platform.settle();
    fleet.platform.children.clear();
    fleet.platform.advance(5min);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, IsEmpty());
    fleet.window.show();
    fleet.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(3));
}

} // namespace
} // namespace varnhold::testing
