#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "supervisor.h"
#include "unit/status/event_database.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::Each;
using ::testing::HasSubstr;
using ::testing::Not;

// A bot of its own name, since logs have fixed places; the log goes with the test.
struct Daemon {
    std::string role = "road-" + std::to_string(::getpid());
    std::string log = "/tmp/vh-" + role + ".log";
    Daemon() = default;
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;
    ~Daemon() { std::filesystem::remove(log); }

    // What a daemon does when it has answered: a mark in its log and a row with its model.
    void reply(EventDatabase& events, const std::string& model) const {
        std::ofstream(log, std::ios::app) << "[MSG] answered\n";
        events.add(1, role, "'" + model + "'");
    }
};

// Moves time in steps in which background work is done, as it is in real life.
void pass(FakePlatform& platform, std::chrono::milliseconds time) {
    constexpr auto step = 20ms;
    for (auto passed = 0ms; passed < time; passed += step) {
        platform.advance(step);
        platform.settle();
    }
}

TEST(RoadOfOneReply, LeadsFromALineInTheLogToTheBarAndFromTheDatabaseToTheMenu) {
    const Daemon daemon;
    Supervisor supervisor;
    supervisor.writeBots({bot(daemon.role)});
    supervisor.list("10", "0", labelOf(daemon.role));
    supervisor.home.makeFolder(
        std::filesystem::path(supervisor.constants.governorDBPath).parent_path());
    EventDatabase events(supervisor.constants.governorDBPath);
    events.makeTable();
    supervisor.home.write(daemon.log, "[CHAIN] began\n");
    supervisor.launch();
    pass(supervisor.platform, 4s); // two samples of a quiet bot
    const auto height = [&] { return supervisor.presentation.image.bars.at(0).height; };
    EXPECT_EQ(height(), 1);
    EXPECT_THAT(supervisor.presentation.rowTitles(), Each(Not(HasSubstr("glm-5"))));

    daemon.reply(events, "glm-5");
    pass(supervisor.platform, 2s);
    EXPECT_EQ(supervisor.delegate->bars().barTarget.at(daemon.role), 1);
    pass(supervisor.platform, 1s);
    EXPECT_GT(height(), 8);
    pass(supervisor.platform, 8s);
    EXPECT_EQ(height(), 1); // quiet again
    EXPECT_THAT(supervisor.presentation.rowTitles(), Contains(HasSubstr("glm-5")));
    EXPECT_THAT(supervisor.presentation.title, HasSubstr("1/1"));
}

} // namespace
} // namespace varnhold::testing
