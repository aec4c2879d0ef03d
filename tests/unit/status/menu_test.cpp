#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "status/fleet_picture.h"
#include "status/menu.h"
#include "support/records.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> titlesOf(const std::vector<MenuRow>& rows) {
    std::vector<std::string> titles;
    for (const MenuRow& row : rows) {
        titles.push_back(row.kind == MenuRow::Kind::separator ? "-" : row.title);
    }
    return titles;
}

const MenuRow* find(const std::vector<MenuRow>& rows, const std::string& title) {
    for (const MenuRow& row : rows) {
        if (row.title == title) {
            return &row;
        }
    }
    return nullptr;
}

TEST(StatusMenu, OfNoBotsAndNoGroupsKeepsBothSeparators) {
    EXPECT_THAT(titlesOf(statusMenuRows({})),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "-", "Quit"));
}

TEST(StatusMenu, RowsHaveTheirKeysAndActions) {
    const auto rows = statusMenuRows({});
    EXPECT_EQ(rows[0], (MenuRow{.kind = MenuRow::Kind::item,
                                .title = "⚙️ Preferences...",
                                .key = ",",
                                .action = MenuAction::openModelSelector}));
    EXPECT_EQ(rows[2], (MenuRow{.kind = MenuRow::Kind::item,
                                .title = "🟢 Start All Agents",
                                .key = "s",
                                .action = MenuAction::startAllAgents}));
    EXPECT_EQ(rows[3], (MenuRow{.kind = MenuRow::Kind::item,
                                .title = "🔄 Restart All Agents",
                                .key = "r",
                                .action = MenuAction::restartAllAgents}));
    EXPECT_EQ(rows[6], (MenuRow{.kind = MenuRow::Kind::item,
                                .title = "Quit",
                                .key = "q",
                                .action = MenuAction::terminate}));
}

TEST(StatusMenu, WithEveryBotPausedHasTheHeaderAlone) {
    const auto rows =
        statusMenuRows({.bots = {bot("a", {.isPaused = true}), bot("b", {.isPaused = true})}});
    EXPECT_THAT(titlesOf(rows),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "── Bots ──", "-", "Quit"));
    EXPECT_EQ(rows[5].kind, MenuRow::Kind::header);
    EXPECT_EQ(rows[5].action, MenuAction::none);
}

TEST(StatusMenu, BotRowsTellStateAndLastModelAndCarryTheLabel) {
    FleetPicture sources{.bots = {bot("a"), bot("paused", {.isPaused = true}), bot("b"), bot("c")},
                         .models = {{"a", "opus"}, {"paused", "x"}}};
    sources.statuses = {{bot("a").launchdLabel, DaemonStatus::running},
                        {bot("b").launchdLabel, DaemonStatus::crashed},
                        {bot("c").launchdLabel, DaemonStatus::running}};
    const auto rows = statusMenuRows(sources);
    EXPECT_EQ(rows[6].title, "🟢 🤖 a (opus)");
    EXPECT_EQ(rows[7].title, "🔴 🤖 b (Idle)");
    EXPECT_EQ(rows[8].title, "🟢 🤖 c (Idle)");
    EXPECT_EQ(rows[6].action, MenuAction::toggleDaemon);
    EXPECT_EQ(rows[6].value, "com.ostrelleai.a.telegramd");
    EXPECT_EQ(rows[6].key, "");
}

TEST(StatusMenu, ABotUnknownToTheServiceManagerShowsTheWhiteDisc) {
    const auto rows = statusMenuRows(
        {.bots = {bot("a")}, .statuses = {{"com.example.stale", DaemonStatus::running}}});
    EXPECT_EQ(rows[6].title, "⚪️ 🤖 a (Idle)");
}

TEST(StatusMenu, AnAlertTellsProviderAndDayInRed) {
    const auto rows = statusMenuRows({.alerts = {{"gemini", "2026-03-04"}}});
    EXPECT_EQ(rows[2], (MenuRow{.kind = MenuRow::Kind::item,
                                .title = "⚠️ Re-login to Gemini (Google) — failing since "
                                         "2026-03-04",
                                .action = MenuAction::reloginProvider,
                                .value = "gemini",
                                .red = true}));
    EXPECT_EQ(rows[3].kind, MenuRow::Kind::separator);
    EXPECT_EQ(rows[4].title, "🟢 Start All Agents");
}

TEST(StatusMenu, AnAlertWithoutADayCarriesItsKeyAsTyped) {
    const auto rows = statusMenuRows({.alerts = {{"x", ""}}});
    EXPECT_EQ(rows[2].title, "⚠️ Re-login to X");
    EXPECT_EQ(rows[2].value, "x");
}

TEST(StatusMenu, OnlyAlertsAreRed) {
    const auto rows =
        statusMenuRows({.alerts = {{"x", ""}}, .bots = {bot("a")}, .groups = {{"G", {"m"}}}});
    for (const MenuRow& row : rows) {
        EXPECT_EQ(row.red, row.action == MenuAction::reloginProvider) << row.title;
    }
}

TEST(StatusMenu, AGroupListsItsModelsInFailoverOrderForReadingOnly) {
    const auto rows = statusMenuRows({.groups = {{"Night", {"Opus", "Qwen 3"}}, {"Day", {"o"}}}});
    EXPECT_THAT(titlesOf(rows),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "-", "── Night ──", "  Opus", "  Qwen 3",
                            "-", "── Day ──", "  o", "-", "Quit"));
    ASSERT_NE(find(rows, "  Opus"), nullptr);
    EXPECT_EQ(*find(rows, "  Opus"), (MenuRow{.kind = MenuRow::Kind::header, .title = "  Opus"}));
}

TEST(StatusMenu, AGroupWithoutModelsShowsNothingNotEvenItsSeparator) {
    EXPECT_EQ(statusMenuRows({.groups = {{"Empty", {}}}}), statusMenuRows({}));
}

TEST(StatusMenu, TextsComeOutAsTyped) {
    BotConfig typed = bot("a");
    typed.title = "Health & Wealth\t_now_";
    const auto rows = statusMenuRows({.bots = {typed}, .groups = {{"A & B", {"x_y"}}}});
    EXPECT_NE(find(rows, "⚪️ 🤖 Health & Wealth\t_now_ (Idle)"), nullptr);
    EXPECT_NE(find(rows, "── A & B ──"), nullptr);
    EXPECT_NE(find(rows, "  x_y"), nullptr);
}

TEST(StatusMenu, OfVeryManyAlertsNamesTheFirstAndCountsTheRest) {
    FleetPicture picture;
    for (int i = 0; i < 50'000; ++i) {
        picture.alerts.push_back({"Provider " + std::to_string(i), ""});
    }
    const auto rows = statusMenuRows(picture);
    EXPECT_EQ(rows[2].title, "⚠️ Re-login to Provider 0");
    EXPECT_EQ(rows[101].title, "⚠️ Re-login to Provider 99");
    EXPECT_EQ(rows[102].title, "… and 49900 more");
    EXPECT_EQ(rows[103].kind, MenuRow::Kind::separator);
    picture.alerts.resize(100);
    EXPECT_EQ(find(statusMenuRows(picture), "… and 0 more"), nullptr);
    EXPECT_EQ(statusMenuRows(picture)[102].kind, MenuRow::Kind::separator);
}

TEST(StatusMenu, OfAnEndlessNameShowsTheBeginning) {
    const std::string endless(5'000'000, 'n');
    BotConfig named = bot("a");
    named.title = endless;
    const auto rows = statusMenuRows({.alerts = {{.provider = endless, .since = endless}},
                                      .bots = {named},
                                      .groups = {{endless, {endless}}}});
    std::size_t cut = 0;
    for (const MenuRow& row : rows) {
        EXPECT_LT(row.title.size(), 1010);
        cut += row.title.ends_with("n…") ? 1U : 0U;
    }
    EXPECT_EQ(cut, 4);
}

} // namespace
} // namespace varnhold::testing
