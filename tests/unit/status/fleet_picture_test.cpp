#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <sys/inotify.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "event_database.h"
#include "records/groups.h"
#include "status/fleet_picture.h"
#include "support/fake_platform.h"
#include "support/records.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using varnhold::testing::model;

// Counts how often a file is opened.
class Openings final {
public:
    explicit Openings(const std::string& path) {
        // Closing is watched too, since equal events in a row come as one.
        EXPECT_GE(::inotify_add_watch(events_, path.c_str(), IN_OPEN | IN_CLOSE), 0);
    }
    ~Openings() { ::close(events_); }
    Openings(const Openings&) = delete;
    Openings& operator=(const Openings&) = delete;

    [[nodiscard]] int count() const {
        inotify_event event{}; // without a name: a file is watched, not a folder
        int found = 0;
        while (::read(events_, &event, sizeof event) == sizeof event) {
            found += (event.mask & IN_OPEN) != 0 ? 1 : 0;
        }
        return found;
    }

private:
    int events_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
};

class Gather : public ::testing::Test {
protected:
    testing::TemporaryHome home;
    testing::FakePlatform fake;
    Constants constants{home.path()};
    FleetContext context{fake.interfaces, constants};

    Gather() { home.makeFolder(constants.appSupportDir); }

    void listing(const std::string& text) {
        fake.answer = [text](const platform::ProcessRequest&) {
            platform::ProcessResult result;
            result.started = true;
            result.standardOutput = text;
            return result;
        };
    }
};

TEST_F(Gather, FindsTheJobsTheModelsTheBotsTheAlertsAndTheGroups) {
    listing("PID\tStatus\tLabel\n7\t0\tcom.x\n-\t1\tcom.y\n");
    EventDatabase daemons(constants.governorDBPath);
    daemons.makeTable();
    daemons.add(1, "cos", "'m'");
    home.write(constants.botsConfigFile, encodeBots({{.title = "Cos", .role = "cos"}}));
    home.write(constants.reauthAlertsFile, R"({"qwen":{"since":"2026-03-04"}})");
    FleetSources sources(constants);
    const FleetPicture picture = gather(context, sources);
    EXPECT_EQ(statusOf(picture.statuses, "com.x"), DaemonStatus::running);
    EXPECT_EQ(statusOf(picture.statuses, "com.y"), DaemonStatus::crashed);
    EXPECT_THAT(picture.models, ElementsAre(Pair("cos", "m")));
    ASSERT_EQ(picture.bots.size(), 1U);
    EXPECT_EQ(picture.bots[0].title, "Cos");
    EXPECT_THAT(picture.alerts, ElementsAre(ReauthAlert{"qwen", "2026-03-04"}));
    EXPECT_THAT(picture.groups, IsEmpty());
}

TEST_F(Gather, FindsGroupsWithTheirModelsNamesInTheFilesOrder) {
    home.write(
        constants.customGroupsFile,
        *encodeGroups({{.name = "Night", .models = {model("o", {.name = "Opus"}), model("q")}},
                       {.name = "Day"}}));
    FleetSources sources(constants);
    const std::vector<MenuGroup> groups = gather(context, sources).groups;
    ASSERT_EQ(groups.size(), 2U);
    EXPECT_EQ(groups[0].name, "Night");
    EXPECT_THAT(groups[0].models, ElementsAre("Opus", "Model q"));
    EXPECT_EQ(groups[1].name, "Day");
    EXPECT_THAT(groups[1].models, IsEmpty());
}

TEST_F(Gather, FindsWhatTheBotsFileSaysNowHoweverOftenItIsAsked) {
    FleetSources sources(constants);
    const auto titles = [&] {
        std::vector<std::string> found;
        for (const BotConfig& bot : gather(context, sources).bots) {
            found.push_back(bot.title);
        }
        return found;
    };
    EXPECT_THAT(titles(), IsEmpty());
    for (const std::string title : {"One", "Two", "Two", "One"}) { // of one length, at one moment
        home.write(constants.botsConfigFile, encodeBots({{.title = title, .role = "r"}}));
        EXPECT_THAT(titles(), ElementsAre(title));
        EXPECT_THAT(titles(), ElementsAre(title));
    }
    home.write(constants.botsConfigFile, "[broken");
    EXPECT_THAT(titles(), IsEmpty());
    home.write(constants.botsConfigFile, encodeBots({{.title = "One", .role = "r"}}));
    EXPECT_THAT(titles(), ElementsAre("One"));
    std::filesystem::remove(constants.botsConfigFile);
    EXPECT_THAT(titles(), IsEmpty());
}

TEST_F(Gather, ReadsEachFileOnce) {
    const std::array files{constants.botsConfigFile, constants.reauthAlertsFile,
                           constants.customGroupsFile};
    FleetSources sources(constants);
    for (const std::string& file : files) {
        home.write(file, "[]");
        const Openings openings(file);
        static_cast<void>(gather(context, sources));
        EXPECT_EQ(openings.count(), 1) << file;
    }
}

TEST_F(Gather, TellsThatTheServiceManagerHasBeenAskedBeforeItReadsAnything) {
    EventDatabase daemons(constants.governorDBPath);
    daemons.makeTable();
    FleetSources sources(constants);
    const FleetPicture picture = gather(context, sources, [&] {
        EXPECT_EQ(fake.commandLines(), std::vector<std::string>{"launchctl list"});
        daemons.add(1, "cos", "'m'");
    });
    EXPECT_THAT(picture.models, ElementsAre(Pair("cos", "m")));
}

// A picture is a value: whatever finds it may be gone when it is shown.
TEST_F(Gather, WorksOnAnyThreadWithSourcesOfItsOwn) {
    listing("7\t0\tcom.x\n");
    FleetPicture picture;
    std::thread([&] {
        FleetSources sources(constants);
        picture = gather(context, sources);
    }).join();
    EXPECT_EQ(statusOf(picture.statuses, "com.x"), DaemonStatus::running);
}

} // namespace
} // namespace varnhold
