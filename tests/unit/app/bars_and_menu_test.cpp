#include "supervisor.h"

#include <filesystem>
#include <string>

#include "base/files.h"
#include "records/groups.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

// Logs have fixed places, so the role is unique to the process and the log goes with the test.
struct Log {
    std::string role = "test-" + std::to_string(::getpid());
    std::string path = "/tmp/vh-" + role + ".log";
    ~Log() { std::filesystem::remove(path); }
};

TEST(Activity, LiftsTheBarOfABotWhoseLogHasMoreMarksThanTwoSecondsAgo) {
    const Log log;
    Supervisor supervisor;
    supervisor.writeBots({bot(log.role)});
    supervisor.list("10", "0", labelOf(log.role));
    supervisor.home.write(log.path, "[MSG] hello\n");
    supervisor.launch();

    const auto sampleOnce = [&] {
        supervisor.delegate->sampleBotActivity();
        supervisor.platform.settle();
    };
    sampleOnce();
    EXPECT_EQ(supervisor.delegate->bars().barTarget.at(log.role), 0.0); // nothing to compare with
    supervisor.home.write(log.path, "[MSG] hello\n[PROCESS] [CHAIN]\n");
    sampleOnce();
    EXPECT_EQ(supervisor.delegate->bars().barTarget.at(log.role), 1.0);
    sampleOnce();
    EXPECT_EQ(supervisor.delegate->bars().barTarget.at(log.role), 0.0);
}

TEST(Activity, IsSampledAwayFromTheMainThread) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->sampleBotActivity();
    EXPECT_THAT(supervisor.platform.record, ElementsAre("post background"));
    EXPECT_EQ(supervisor.platform.priorities.back(), platform::Priority::utility);
}

TEST(Animation, DrawsWhileABarMovesAndNotWhenTheFleetIsIdle) {
    const Log log;
    Supervisor supervisor;
    supervisor.writeBots({bot(log.role)});
    supervisor.list("10", "0", labelOf(log.role));
    supervisor.launch();
    for (int tick = 0; tick < 100; ++tick) {
        supervisor.delegate->animateBars();
    }
    EXPECT_THAT(supervisor.presentation.record, IsEmpty());

    supervisor.delegate->sampleBotActivity();
    supervisor.platform.settle();
    supervisor.home.write(log.path, "[NOTIFY]");
    supervisor.delegate->sampleBotActivity();
    supervisor.platform.settle();
    supervisor.delegate->animateBars();
    EXPECT_THAT(supervisor.presentation.record, ElementsAre("image"));
    EXPECT_DOUBLE_EQ(supervisor.presentation.image.bars.at(0).height, 0.18 * 16);
}

TEST(Animation, RestsUntilABarHasSomewhereToGo) {
    const Log log;
    Supervisor supervisor;
    supervisor.writeBots({bot(log.role)});
    supervisor.list("10", "0", labelOf(log.role));
    supervisor.launch();
    supervisor.platform.advance(60ms);
    EXPECT_EQ(supervisor.platform.pausedTimers(), 1U);
    for (const char* text : {"", "[NOTIFY]"}) {
        supervisor.home.write(log.path, text);
        supervisor.delegate->sampleBotActivity();
        supervisor.platform.settle();
    }
    EXPECT_EQ(supervisor.platform.pausedTimers(), 0U);
    supervisor.forget();
    supervisor.platform.advance(60ms);
    EXPECT_THAT(supervisor.presentation.record, ElementsAre("image"));
}

TEST(Title, OfANewOrderGivesNewBotsFlatBarsAndKeepsTheOthers) {
    const Log log;
    Supervisor supervisor;
    supervisor.writeBots({bot(log.role)});
    supervisor.list("10", "0", labelOf(log.role));
    supervisor.launch();
    for (const char* text : {"", "[NOTIFY]"}) {
        supervisor.home.write(log.path, text);
        supervisor.delegate->sampleBotActivity();
        supervisor.platform.settle();
    }
    supervisor.delegate->animateBars();
    const double risen = supervisor.presentation.image.bars.at(0).height;

    supervisor.writeBots({bot("new"), bot(log.role)});
    supervisor.refresh();
    EXPECT_THAT(supervisor.delegate->bars().botOrder, ElementsAre("new", log.role));
    EXPECT_EQ(supervisor.presentation.image.width, 5.0);
    ASSERT_EQ(supervisor.presentation.image.bars.size(), 2U);
    EXPECT_EQ(supervisor.presentation.image.bars[0].height, 1.0);
    EXPECT_EQ(supervisor.presentation.image.bars[1].height, risen);
    EXPECT_GT(risen, 1.0);
}

TEST(Menu, IsRebuiltFromTheFilesAtEveryPoll) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.launch();
    supervisor.home.write(supervisor.constants.reauthAlertsFile,
                          R"({"gemini":{"since":"2026-03-04T05:06:07Z"}})");
    supervisor.refresh();
    EXPECT_THAT(supervisor.presentation.rowTitles(),
                ElementsAre("⚙️ Preferences...", "-",
                            "⚠️ Re-login to Gemini (Google) — failing since 2026-03-04", "-",
                            "🟢 Start All Agents", "🔄 Restart All Agents", "-", "── Bots ──",
                            "⚪️ 🤖 a (Idle)", "-", "Quit"));
}

TEST(Menu, ListsTheModelsOfEachGroupThatHasAny) {
    Supervisor supervisor;
    supervisor.launch();
    CustomBotGroup writers;
    writers.name = "Writers & more";
    writers.models = {{.id = "a", .name = "Alpha"}, {.id = "b", .name = "Beta"}};
    CustomBotGroup empty;
    empty.name = "Nobody";
    supervisor.home.write(supervisor.constants.customGroupsFile,
                          encodeGroups({writers, empty}).value());
    supervisor.refresh();
    EXPECT_THAT(supervisor.presentation.rowTitles(),
                ElementsAre("⚙️ Preferences...", "-", "🟢 Start All Agents",
                            "🔄 Restart All Agents", "-", "-", "── Writers & more ──", "  Alpha",
                            "  Beta", "-", "Quit"));

    supervisor.home.write(supervisor.constants.customGroupsFile, "[{");
    supervisor.refresh();
    EXPECT_EQ(supervisor.presentation.rows.size(), 7U);
}

TEST(Notices, AreShownOnceAndTheFileIsGone) {
    Supervisor supervisor;
    supervisor.launch();
    const std::string file = supervisor.constants.appSupportDir + "/pending_model_notices.json";
    supervisor.home.write(file, R"([{"message":"m","in_chain":true},{"message":"n"}])");
    supervisor.platform.advance(8s);
    ASSERT_EQ(supervisor.presentation.panels.size(), 1U);
    EXPECT_EQ(supervisor.presentation.panels[0].title, "New AI models installed");
    EXPECT_EQ(supervisor.presentation.panels[0].height, 156);
    EXPECT_FALSE(files::exists(file));
}

TEST(Notices, CloseByThemselvesAfterFourteenSeconds) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->showModelNoticePopover({{"m", false}});
    supervisor.platform.advance(13999ms);
    EXPECT_EQ(supervisor.presentation.openPopovers, 1);
    supervisor.platform.advance(1ms);
    EXPECT_EQ(supervisor.presentation.openPopovers, 0);
}

TEST(Notices, OfANewFileReplaceTheOpenOnesAndHaveTheirOwnFourteenSeconds) {
    Supervisor supervisor;
    supervisor.launch();
    const std::string icon = "popover with icon ";
    const auto announce = [&](const char* file) {
        supervisor.home.write(supervisor.constants.appSupportDir + "/pending_model_notices.json",
                              file);
        supervisor.platform.advance(8s);
    };
    announce(R"([{"message":"first"}])");
    EXPECT_EQ(supervisor.presentation.openPopovers, 1);
    announce(R"([{"message":"second"}])");
    EXPECT_EQ(supervisor.presentation.openPopovers, 1);
    // The old one goes before the new one comes, so that they never lie on each other.
    EXPECT_THAT(supervisor.presentation.record, ElementsAre(icon, "popover closed", icon));
    ASSERT_EQ(supervisor.presentation.panels.size(), 2U);
    EXPECT_EQ(supervisor.presentation.panels[1].notices.at(0).message, "second");
    supervisor.platform.advance(13999ms); // the first one's end has come and gone
    EXPECT_EQ(supervisor.presentation.openPopovers, 1);
    supervisor.platform.advance(1ms);
    EXPECT_EQ(supervisor.presentation.openPopovers, 0);
}

// A supervisor with a picture in each place where its icon may be.
struct Icons : Supervisor {
    std::string ofBundle = platform.bundle + "/Contents/Resources/AppIcon.icns";

    Icons() {
        launch();
        home.write(ofBundle, "of the bundle");
        home.write(constants.appIconFile, "the user's");
        presentation.images = {ofBundle, constants.appIconFile};
    }
    void expectIcon(const std::string& path) {
        presentation.record.clear();
        delegate->showModelNoticePopover({{"m", false}});
        EXPECT_EQ(presentation.record.back(), "popover with icon " + path);
    }
};

TEST(NoticeIcon, IsTheOneOfTheBundle) {
    Icons supervisor;
    supervisor.expectIcon(supervisor.ofBundle);
}

TEST(NoticeIcon, IsTheUsersWhereTheBundleHasNoneThatIsAPicture) {
    Icons supervisor;
    supervisor.presentation.images = {supervisor.constants.appIconFile};
    supervisor.expectIcon(supervisor.constants.appIconFile);
    supervisor.presentation.images = {supervisor.ofBundle, supervisor.constants.appIconFile};
    std::filesystem::remove(supervisor.ofBundle);
    supervisor.expectIcon(supervisor.constants.appIconFile);
}

TEST(NoticeIcon, IsTheApplicationsOwnWhereNeitherIsThere) {
    Icons supervisor;
    std::filesystem::remove(supervisor.ofBundle);
    std::filesystem::remove(supervisor.constants.appIconFile);
    supervisor.expectIcon("");
}

} // namespace
} // namespace varnhold::testing
