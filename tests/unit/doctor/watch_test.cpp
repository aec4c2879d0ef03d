#include "doctor/watch.h"

#include <chrono>
#include <string>
#include <vector>

#include "doctor/columns.h"
#include "doctor_home.h"

namespace varnhold::doctor {
namespace {

using testing::botRecord;
using testing::DoctorHome;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::labelOf;
using ::testing::StartsWith;

struct Watched : DoctorHome {
    Watched() {
        write(constants.botsConfigFile, "[" + botRecord("a") + "," + botRecord("b") + "," +
                                            botRecord("c", R"(,"isPaused":true)") + "]");
        listing.output =
            "PID\tStatus\tLabel\n7\t0\t" + labelOf("a") + "\n-\t-9\t" + labelOf("b") + "\n";
        runsFor[7] = std::chrono::seconds(200);
    }
    std::vector<std::string> lines(TextStyle style = {}, std::size_t height = 24) {
        watch.look(around);
        return watch.lines(style, height);
    }
    Watch watch;
};

TEST(Watch, ShowsWhatTheStatusItemShows) {
    Watched home;
    EXPECT_THAT(
        home.lines(),
        ElementsAre("Varnhold 1/3 🔴1   2026-03-04T05:06:07Z", "",
                    "  Bot    State                        Pid  For    Starts  Last model  Busy",
                    "● The a  running                      7    3 min          Idle",
                    "✗ The b  crashed: signal 9 (SIGKILL)                      Idle",
                    "○ The c  paused                                           Idle", "",
                    "q ends"));
}

TEST(Watch, FitsEveryTerminal) {
    Watched home;
    for (const std::size_t width : {1U, 20U, 40U, 80U, 200U}) {
        for (const std::string& line : home.lines({.width = width})) {
            EXPECT_LE(columnsOf(line), std::max<std::size_t>(width, 2)) << line;
        }
    }
    for (std::size_t height = 0; height < 10; ++height) {
        EXPECT_LE(home.lines({}, height).size(), height);
    }
    EXPECT_EQ(home.lines({}, 6)[4], "… and 2 more bots");
}

TEST(Watch, SaysWhyNothingIsKnown) {
    Watched home;
    home.listing.exitCode = 69;
    home.listing.error = "s6 is missing";
    home.listing.output = "";
    EXPECT_EQ(home.lines()[1], "launchctl has failed: s6 is missing");
    home.write(home.constants.botsConfigFile, "[");
    EXPECT_THAT(home.lines()[1], StartsWith("bots.json can't be used"));
}

TEST(Watch, ShowsNoSecretAndNothingThatATerminalObeys) {
    Watched home;
    home.write(home.constants.botsConfigFile,
               R"([{"icon":"x","title":"a\u001b[2Jb t-of-a-bot","token":"t-of-a-bot","role":"a",)"
               R"("launchdLabel":"l","service":"Slack"}])");
    EXPECT_THAT(home.lines()[3], HasSubstr("a␦[2Jb ••••"));
}

TEST(Watch, ShowsOneFrameOverTheOther) {
    EXPECT_EQ(frameOf({"a", "b"}), "\x1b[Ha\x1b[K\r\nb\x1b[K\x1b[J");
}

} // namespace
} // namespace varnhold::doctor
