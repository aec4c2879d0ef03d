#include <gmock/gmock.h>
#include <string>
#include <utility>

#include "settings/bot_editing.h"
#include "shown_columns.h"
#include "views/text/qt_text.h"
#include "views/waiting.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

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
        return announced(row(name), control);
    }
    void openMenu(const QString& name) {
        click(inRow(name, u"Actions for "_s + name.section(QChar(32), 1)));
        settle();
    }
};

TEST(BotsBlock, ShowsARowForEachBotWithItsNameAndState) {
    Fleet fleet;
    fleet.running = {"com.ostrelleai.ops.telegramd"};
    fleet.show();
    ASSERT_NE(fleet.row(u"🤖 ops"_s), nullptr);
    EXPECT_EQ(spoken(fleet.row(u"🤖 ops"_s), QAccessible::Description),
              u"Online, ops, Telegram"_s);
    EXPECT_EQ(spoken(fleet.row(u"🤖 dev"_s), QAccessible::Description),
              u"Offline, dev, Not connected"_s);
    ASSERT_NE(fleet.row(u"⚖️ Governor AI"_s), nullptr);
    EXPECT_NE(fleet.inRow(u"🤖 ops"_s, u"Online"_s), nullptr); // the dot
}

TEST(BotsBlock, SelectsABotByAPressAnywhereOnItsRow) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow(u"🤖 dev"_s);
    EXPECT_EQ(fleet.view->selectedBot->role, "dev");
    QTest::mouseClick(fleet.page, Qt::LeftButton, {},
                      fleet.row(u"🤖 ops"_s)->mapToScene({30, 16}).toPoint()); // on its name
    EXPECT_EQ(fleet.view->selectedBot->role, "ops");
    EXPECT_EQ(fleet.view->selectedBotPrompt, "Watch.");
    EXPECT_TRUE(fleet.row(u"🤖 ops"_s)->property("isSelected").toBool());
    EXPECT_FALSE(fleet.row(u"🤖 dev"_s)->property("isSelected").toBool());
}

TEST(BotsBlock, LeavesTheSelectionAloneWhenAControlOfTheRowIsPressed) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow(u"🤖 dev"_s);
    fleet.click(fleet.inRow(u"🤖 ops"_s,
                            u"Keepalive ON — cache kept warm (uses tokens). Click to disable."_s));
    EXPECT_EQ(fleet.view->selectedBot->role, "dev");
    EXPECT_EQ(fleet.botsOnDisk()[1].keepaliveEnabled, false);
    EXPECT_NE(fleet.inRow(u"🤖 ops"_s,
                          u"Keepalive OFF — saves tokens, cache may go cold. Click to enable."_s),
              nullptr);
}

TEST(BotsBlock, SwitchesKeepaliveForAllOnUnlessAllAreOn) {
    Fleet fleet;
    fleet.view->userBots[1].keepaliveEnabled = false;
    fleet.show();
    fleet.click(u"Keepalive OFF for some/all bots — click to enable for all."_s);
    for (const BotConfig& each : fleet.botsOnDisk()) {
        EXPECT_EQ(each.keepaliveEnabled, true);
    }
    fleet.click(u"Keepalive ON for all bots — click to disable for all (saves tokens)."_s);
    for (const BotConfig& each : fleet.botsOnDisk()) {
        EXPECT_EQ(each.keepaliveEnabled, false);
    }
}

TEST(BotsBlock, AddsTheBotThatWasTyped) {
    Fleet fleet;
    fleet.show();
    fleet.click(u"Role"_s);
    fleet.type(u"hr"_s);
    fleet.press(Qt::Key_Tab);
    fleet.type(u"2:b"_s);
    fleet.click(u"Add bot"_s);
    EXPECT_EQ(fleet.botsOnDisk().back().launchdLabel, "com.ostrelleai.hr.telegramd");
    EXPECT_EQ(fleet.botsOnDisk().back().token, "2:b");
    EXPECT_EQ(fleet.named(u"Role"_s)->property("text"), QVariant(QString()));
    EXPECT_EQ(fleet.named(u"Token"_s)->property("text"), QVariant(QString()));
    fleet.settle();
    EXPECT_NE(fleet.row(u"🤖 New Bot"_s), nullptr);
}

TEST(BotsBlock, BeginsABotOnTelegramAlsoWhereSlackWasPicked) {
    Fleet fleet;
    fleet.show();
    fleet.named(u"Service"_s)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_Down);
    EXPECT_EQ(fleet.view->newBotService, BotService::slack);
    fleet.click(u"Role"_s);
    fleet.type(u"hr"_s);
    fleet.press(Qt::Key_Return); // on to the token
    fleet.type(u" "_s);
    fleet.press(Qt::Key_Return);
    EXPECT_EQ(fleet.botsOnDisk().back().role, "hr");
    EXPECT_EQ(fleet.botsOnDisk().back().token, " ");
    EXPECT_EQ(fleet.botsOnDisk().back().service, BotService::telegram);
    EXPECT_EQ(fleet.named(u"Service"_s)->property("current"), QVariant(u"Slack"_s));
}

TEST(BotsBlock, AsksForWhatIsMissing) {
    Fleet fleet;
    fleet.show();
    fleet.click(u"Add bot"_s);
    EXPECT_TRUE(fleet.view->showAlert);
    EXPECT_EQ(fleet.view->alertMsg, "Please fill in both the Role and the Token fields.");
    EXPECT_THAT(fleet.botsOnDisk(), SizeIs(3));
}

TEST(BotsBlock, OffersToConnectABotWithoutAToken) {
    Fleet fleet;
    fleet.show();
    EXPECT_EQ(fleet.inRow(u"🤖 ops"_s, u"Connect"_s), nullptr);
    EXPECT_NE(fleet.inRow(u"🤖 ops"_s, u"Telegram"_s), nullptr);
    fleet.click(fleet.inRow(u"🤖 dev"_s, u"Connect"_s));
    EXPECT_EQ(fleet.view->tokenSheetBot->role, "dev");
    fleet.press(Qt::Key_Escape);
    EXPECT_FALSE(fleet.view->tokenSheetBot);
    fleet.settle();
    fleet.openMenu(u"🤖 dev"_s);
    fleet.chooseFromMenu(u"Set Token…"_s);
    EXPECT_EQ(fleet.view->tokenSheetBot->role, "dev");
}

TEST(BotsBlock, PausesRestartsAndStopsFromTheMenu) {
    Fleet fleet;
    fleet.show();
    fleet.openMenu(u"🤖 ops"_s);
    fleet.chooseFromMenu(u"Pause"_s);
    EXPECT_EQ(fleet.botsOnDisk()[1].isPaused, true);
    EXPECT_NE(fleet.inRow(u"🤖 ops"_s, u"Paused"_s), nullptr);
    fleet.platform.children.clear();
    fleet.openMenu(u"🤖 ops"_s);
    fleet.chooseFromMenu(u"Restart"_s);
    fleet.openMenu(u"🤖 ops"_s);
    fleet.chooseFromMenu(u"Stop"_s);
    EXPECT_THAT(fleet.platform.commandLines(),
                ElementsAre("launchctl kickstart -k gui/501/com.ostrelleai.ops.telegramd",
                            "launchctl stop com.ostrelleai.ops.telegramd"));
    fleet.openMenu(u"🤖 ops"_s);
    fleet.chooseFromMenu(u"Resume"_s);
    EXPECT_EQ(fleet.botsOnDisk()[1].isPaused, false);
}

TEST(BotsBlock, DeletesABotButNeverOneOfTheSystem) {
    Fleet fleet;
    fleet.show();
    fleet.openMenu(u"⚖️ Governor AI"_s);
    EXPECT_NE(fleet.named(u"Restart"_s, QAccessible::MenuItem), nullptr);
    EXPECT_EQ(fleet.named(u"Delete"_s, QAccessible::MenuItem), nullptr);
    fleet.press(Qt::Key_Escape);
    fleet.settle();
    fleet.openMenu(u"🤖 ops"_s);
    fleet.chooseFromMenu(u"Delete"_s);
    EXPECT_THAT(fleet.botsOnDisk(), SizeIs(2));
    EXPECT_EQ(fleet.row(u"🤖 ops"_s), nullptr);
}

TEST(BotsBlock, SwitchesTheServiceFromTheMenu) {
    Fleet fleet;
    fleet.show();
    fleet.clickRow(u"🤖 ops"_s, Qt::RightButton);
    fleet.chooseFromMenu(u"Slack"_s);
    EXPECT_EQ(fleet.botsOnDisk()[1].service, BotService::slack);
    EXPECT_EQ(fleet.botsOnDisk()[1].launchdLabel, "com.ostrelleai.ops.telegramd");
    EXPECT_NE(fleet.inRow(u"🤖 ops"_s, u"Slack"_s), nullptr);
}

TEST(BotsBlock, OpensTheMenuOfTheRowByKeys) {
    Fleet fleet;
    fleet.show();
    for (const auto& [key, modifiers] :
         {std::pair{Qt::Key_Menu, Qt::KeyboardModifiers()},
          std::pair{Qt::Key_F10, Qt::KeyboardModifiers(Qt::ShiftModifier)}}) {
        fleet.row(u"🤖 ops"_s)->forceActiveFocus(Qt::TabFocusReason);
        fleet.press(key, modifiers);
        fleet.settle();
        EXPECT_NE(fleet.named(u"Update Token…"_s, QAccessible::MenuItem), nullptr);
        fleet.press(Qt::Key_Escape);
        fleet.settle();
        EXPECT_EQ(fleet.named(u"Update Token…"_s, QAccessible::MenuItem), nullptr);
    }
}

TEST(BotsBlock, GoesFromRowToRowByArrowsAndSelectsByReturn) {
    Fleet fleet;
    fleet.show();
    fleet.named(u"Add bot"_s)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_Tab);
    EXPECT_EQ(fleet.focused(), fleet.row(u"⚖️ Governor AI"_s));
    fleet.press(Qt::Key_Down);
    fleet.press(Qt::Key_Down);
    EXPECT_EQ(fleet.focused(), fleet.row(u"🤖 dev"_s));
    fleet.press(Qt::Key_Down); // there is no further
    EXPECT_EQ(fleet.focused(), fleet.row(u"🤖 dev"_s));
    fleet.press(Qt::Key_Up);
    fleet.press(Qt::Key_Return);
    EXPECT_EQ(fleet.view->selectedBot->role, "ops");
    fleet.press(Qt::Key_Tab);
    EXPECT_EQ(spoken(fleet.focused(), QAccessible::Name),
              u"Keepalive ON — cache kept warm (uses tokens). Click to disable."_s);
}

TEST(BotsBlock, CarriesTheLabelToWhereBotsAreTaken) {
    Fleet fleet;
    fleet.show();
    fleet.row(u"🤖 ops"_s)->forceActiveFocus(Qt::TabFocusReason);
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
    ASSERT_NE(fleet.row(u"🤖 Ops & <b>Build</b>"_s), nullptr);
    QQuickItem* longOne = fleet.row(u"🤖 "_s + QString(200, u'x'));
    ASSERT_NE(longOne, nullptr);
    QQuickItem* menu = announced(longOne, u"Actions for "_s + QString(200, u'x'));
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
    fleet.row(u"⚖️ Governor AI"_s)->forceActiveFocus(Qt::TabFocusReason);
    fleet.press(Qt::Key_End);
    fleet.settle();
    EXPECT_EQ(fleet.focused(), fleet.row(u"🤖 b196"_s));
    EXPECT_THAT(fleet.platform.commandLines(),
                Contains("launchctl list com.ostrelleai.b196.telegramd"));
    EXPECT_EQ(fleet.row(u"🤖 ops"_s), nullptr);
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

TEST(BotsBlock, TellsARoleThatHasNoRoomInItsToolTip) {
    Fleet fleet;
    const BotConfig longRole = fleet.view->userBots.emplace_back(bot("keeper-of-the-longest-role"));
    fleet.show();
    const auto help = [&](const QString& name) {
        for (const QQuickItem* each : fleet.row(name)->findChildren<QQuickItem*>()) {
            if (QByteArray(each->metaObject()->className()).startsWith("BotWords")) {
                return each->property("help").toString();
            }
        }
        return u"(no words)"_s;
    };
    EXPECT_EQ(help(u"🤖 ops"_s), QString());
    const QString name = u"🤖 "_s + toQString(longRole.title);
    EXPECT_EQ(help(name), name + u" · keeper-of-the-longest-role"_s);
}

TEST(BotsBlock, ShowsWhereABotJustAddedStands) {
    Fleet fleet;
    for (int i = 0; i < 30; ++i) {
        fleet.view->userBots.push_back(bot("bot" + std::to_string(i)));
    }
    fleet.show();
    fleet.view->newBotRole = "scout";
    fleet.view->newBotToken = "1:a";
    fleet.view->changed();
    fleet.click(u"Add bot"_s);
    fleet.settle();
    QQuickItem* row = fleet.row(u"🤖 New Bot"_s);
    ASSERT_NE(row, nullptr);
    const QQuickItem* list = fleet.named(u"Bots"_s, QAccessible::List);
    const QRectF seen(list->mapToScene({}), list->size());
    EXPECT_TRUE(seen.contains(QRectF(row->mapToScene({}), row->size())));
    const auto lights = [row] {
        for (const QQuickItem* each : row->findChildren<QQuickItem*>()) {
            if (each->property("running").toBool() && each->inherits("QQuickRectangle")) {
                return true;
            }
        }
        return false;
    };
    EXPECT_TRUE(lights());
    WAIT_UNTIL(!lights());
}

} // namespace
} // namespace varnhold::testing
