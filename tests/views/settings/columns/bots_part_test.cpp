#include <QColor>
#include <QSignalSpy>
#include <string>
#include <vector>

#include "modelled_settings.h"
#include "settings/bot_editing.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A fleet of the built-in governor, ops and dev; agents named in `running` are alive.
struct BotRows : ModelledSettings {
    BotRows() {
        answerForAgents();
        view->userBots = {builtInGovernorBot(), bot("ops"), bot("dev")};
        view->userBots[1].token = "1:a";
        view->save();
        modelled();
    }

    [[nodiscard]] BotsPart& bots() const { return *model->bots(); }
    [[nodiscard]] std::vector<std::string> shown(const char* name) const {
        return column(*bots().rows(), name);
    }
    [[nodiscard]] std::vector<std::string> menu(int row) const {
        std::vector<std::string> titles;
        for (const QVariant& each : bots().openMenu(row)) {
            titles.push_back(each.toMap().value(QStringLiteral("title")).toString().toStdString());
        }
        return titles;
    }
};

const QString opsLabel = QStringLiteral("com.ostrelleai.ops.telegramd");

TEST(BotsPart, ShowsTheRecordsBotsInTheirOrder) {
    const BotRows fleet;
    EXPECT_THAT(fleet.shown("title"), ElementsAre("Governor AI", "ops", "dev"));
    EXPECT_THAT(fleet.shown("role"), ElementsAre("governor", "ops", "dev"));
    EXPECT_THAT(fleet.shown("presence"), ElementsAre("offline", "offline", "offline"));
    EXPECT_THAT(fleet.shown("offersConnection"), ElementsAre("true", "false", "true"));
    EXPECT_THAT(fleet.shown("keepaliveSymbol"), ElementsAre("bolt.fill", "bolt.fill", "bolt.fill"));
}

TEST(BotsPart, OutlinesEachBotInTheColourOfItsBar) {
    const BotRows fleet;
    const auto color = fleet.bots().rows()->value(2, QStringLiteral("outline")).value<QColor>();
    EXPECT_NEAR(color.hsvHueF(), 0.83, 0.01);
    EXPECT_NEAR(color.hsvSaturationF(), 0.8, 0.01);
    EXPECT_NEAR(color.valueF(), 0.95, 0.01);
}

TEST(BotsPart, NamesOnlyTheRowThatChanged) {
    BotRows fleet;
    QSignalSpy changes(fleet.bots().rows(), &QAbstractItemModel::dataChanged);
    fleet.view->togglePauseBot(fleet.view->userBots[1]);
    ASSERT_THAT(changes, SizeIs(1));
    EXPECT_EQ(changes.front().front().toModelIndex().row(), 1);
    EXPECT_THAT(fleet.shown("presenceHelp"), ElementsAre("Offline", "Paused", "Offline"));
}

TEST(BotsPart, WatchesAnAgentOnlyWhileARowOfItCanBeSeen) {
    BotRows fleet;
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, IsEmpty());
    fleet.running = {opsLabel.toStdString()};
    fleet.bots().rowAppeared(opsLabel);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.commandLines(),
                ElementsAre("launchctl list com.ostrelleai.ops.telegramd"));
    EXPECT_THAT(fleet.shown("presence"), ElementsAre("offline", "online", "offline"));
    fleet.platform.advance(15s);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(2));
    fleet.bots().rowDisappeared(opsLabel);
    fleet.platform.advance(10min);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(2));
    EXPECT_THAT(fleet.shown("presence"), ElementsAre("offline", "online", "offline"));
}

TEST(BotsPart, WatchesAnAgentOfTwoRowsOnceAndUntilBothAreGone) {
    BotRows fleet;
    fleet.bots().rowAppeared(opsLabel);
    fleet.bots().rowAppeared(opsLabel);
    fleet.bots().rowDisappeared(opsLabel);
    fleet.platform.settle();
    fleet.platform.advance(15s);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(2));
    fleet.bots().rowDisappeared(opsLabel);
    fleet.bots().rowDisappeared(opsLabel);
    fleet.platform.advance(1min);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(2));
}

TEST(BotsPart, EndsTheWatchOfABotThatIsRemoved) {
    BotRows fleet;
    fleet.bots().rowAppeared(opsLabel);
    fleet.view->removeBot(fleet.view->userBots[1]);
    fleet.platform.advance(10min);
    fleet.platform.settle();
    EXPECT_THAT(fleet.platform.children, SizeIs(1)); // the question that was under way
    fleet.bots().rowDisappeared(opsLabel);           // its row has faded
    EXPECT_THAT(fleet.shown("title"), ElementsAre("Governor AI", "dev"));
}

TEST(BotsPart, TurnsKeepaliveOnForAllUnlessItIsOnForAll) {
    BotRows fleet;
    QSignalSpy changes(&fleet.bots(), &BotsPart::keepaliveChanged);
    EXPECT_TRUE(fleet.bots().allKeptAlive());
    fleet.bots().toggleKeepalive(1);
    EXPECT_FALSE(fleet.bots().allKeptAlive());
    EXPECT_EQ(fleet.bots().keepaliveSymbol(), QStringLiteral("bolt.slash"));
    EXPECT_EQ(fleet.bots().keepaliveHelp(),
              QStringLiteral("Keepalive OFF for some/all bots — click to enable for all."));
    EXPECT_EQ(fleet.botsOnDisk()[1].keepaliveEnabled, false);
    fleet.bots().toggleKeepaliveForAll();
    EXPECT_TRUE(fleet.bots().allKeptAlive());
    EXPECT_THAT(changes, SizeIs(2));
    for (const BotConfig& each : fleet.botsOnDisk()) {
        EXPECT_EQ(each.keepaliveEnabled, true);
    }
}

TEST(BotsPart, KeepsNoBotAliveWhereThereIsNone) {
    BotRows fleet;
    fleet.view->userBots.clear();
    fleet.view->changed();
    EXPECT_FALSE(fleet.bots().allKeptAlive());
    EXPECT_EQ(fleet.bots().keepaliveSymbol(), QStringLiteral("bolt.slash"));
}

TEST(BotsPart, OffersToDeleteABotUnlessItBelongsToTheSystem) {
    const BotRows fleet;
    EXPECT_THAT(fleet.menu(0), ElementsAre("Pause", "Restart", "Stop", "Set Token…", "",
                                           "Connection Service", "Telegram", "Slack"));
    EXPECT_THAT(fleet.menu(1),
                ElementsAre("Pause", "Restart", "Stop", "Update Token…", "", "Connection Service",
                            "Telegram", "Slack", "", "Delete"));
    EXPECT_THAT(fleet.menu(7), IsEmpty());
}

TEST(BotsPart, DescribesAMenuRowAsItShouldLook) {
    const BotRows fleet;
    const QVariantList menu = fleet.bots().openMenu(1);
    const auto value = [&menu](int row, const char* name) {
        return menu.at(row).toMap().value(QString::fromLatin1(name));
    };
    EXPECT_EQ(value(0, "symbol"), QVariant(QStringLiteral("pause.fill")));
    EXPECT_EQ(value(4, "kind"), QVariant(QStringLiteral("divider")));
    EXPECT_EQ(value(5, "kind"), QVariant(QStringLiteral("section")));
    EXPECT_EQ(value(6, "checked"), QVariant(true));
    EXPECT_EQ(value(7, "checked"), QVariant(false));
    EXPECT_EQ(value(9, "destructive"), QVariant(true));
}

TEST(BotsPart, PerformsTheMenuOnTheBotItWasOpenedFor) {
    BotRows fleet;
    EXPECT_THAT(fleet.menu(1), SizeIs(10));
    fleet.view->userBots.erase(fleet.view->userBots.begin()); // the rows move up meanwhile
    fleet.view->changed();
    fleet.bots().trigger(9);
    EXPECT_THAT(fleet.shown("title"), ElementsAre("dev"));
    fleet.bots().trigger(40);
    fleet.bots().trigger(-1);
    EXPECT_THAT(fleet.shown("title"), ElementsAre("dev"));
}

TEST(BotsPart, SelectsConnectsAndSwitchesTheBotOfTheRow) {
    BotRows fleet;
    fleet.bots().select(2);
    EXPECT_THAT(fleet.shown("isSelected"), ElementsAre("false", "false", "true"));
    fleet.bots().connectBot(2);
    EXPECT_EQ(fleet.view->tokenSheetBot->role, "dev");
    EXPECT_THAT(fleet.menu(1), SizeIs(10));
    fleet.bots().trigger(7);
    EXPECT_THAT(fleet.shown("service"), ElementsAre("Telegram", "Slack", "Telegram"));
    fleet.bots().select(3);
    fleet.bots().select(-1);
    EXPECT_EQ(fleet.view->selectedBot->role, "dev");
}

TEST(BotsPart, AddsABotOnTelegramWhateverTheFormSays) {
    BotRows fleet;
    QSignalSpy changes(&fleet.bots(), &BotsPart::newBotChanged);
    fleet.bots().setNewService(QStringLiteral("Slack"));
    fleet.bots().setNewRole(QStringLiteral("hr"));
    fleet.bots().setNewToken(QStringLiteral(" "));
    EXPECT_THAT(changes, SizeIs(3));
    fleet.bots().addBot();
    EXPECT_EQ(fleet.bots().newRole(), QString());
    EXPECT_EQ(fleet.bots().newToken(), QString());
    EXPECT_EQ(fleet.bots().newService(), QStringLiteral("Slack"));
    EXPECT_THAT(fleet.shown("label"),
                ElementsAre("com.ostrelleai.governor", opsLabel.toStdString(),
                            "com.ostrelleai.dev.telegramd", "com.ostrelleai.hr.telegramd"));
    EXPECT_EQ(fleet.botsOnDisk().back().service, BotService::telegram);
    EXPECT_EQ(fleet.botsOnDisk().back().token, " ");
}

TEST(BotsPart, KnowsNoOtherServicesThanThoseOffered) {
    const BotRows fleet;
    EXPECT_EQ(fleet.bots().services(),
              (QStringList{QStringLiteral("Telegram"), QStringLiteral("Slack")}));
    fleet.bots().setNewService(QStringLiteral("slack"));
    EXPECT_EQ(fleet.bots().newService(), QStringLiteral("Telegram"));
}

} // namespace
} // namespace varnhold::testing
