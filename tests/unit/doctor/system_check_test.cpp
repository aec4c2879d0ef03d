#include "doctor/system_check.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <utility>
#include <vector>

#include "doctor/catalogue.h"
#include "doctor/event_table.h"
#include "doctor/left_processes.h"
#include "doctor_home.h"

namespace varnhold::doctor {
namespace {

using ::testing::Contains;
using testing::DoctorHome;
using ::testing::ElementsAre;
using testing::findingsOf;
using ::testing::HasSubstr;
using testing::idsOf;
using ::testing::IsEmpty;
using testing::labelOf;
using ::testing::Not;
using ::testing::SizeIs;

struct Machine : DoctorHome {
    Machine() {
        code = around.bundlePath + "/Contents/Resources/daemon";
        for (const char* name : {"provider_telegramd/__main__.py", "circular_failover.py",
                                 "auto_setup_chains.py", "login_scout.sh"}) {
            write(code + "/" + name, "");
        }
        around.environment["DISPLAY"] = ":0";
        lockHolder = 42;
        listing.output = "PID\tStatus\tLabel\n";
    }
    [[nodiscard]] Section check() const { return checkSystem(around, findJobs(around)); }

    // What is said of one thing in the table.
    [[nodiscard]] std::string fact(const std::string& name) const {
        const Section section = check();
        for (const auto& row : section.table.rows) {
            if (row.cells[0] == name) {
                return row.cells[1];
            }
        }
        return "";
    }

    std::string code;
};

TEST(SystemCheck, AMachineOnWhichAllIsThereHasNothingToTell) {
    const Machine machine;
    EXPECT_THAT(machine.check().findings, IsEmpty());
    EXPECT_EQ(machine.fact("Varnhold"), "runs, pid 42");
    EXPECT_EQ(machine.fact("Daemon code"), machine.code);
}

TEST(SystemCheck, AServiceToolThatFailsIsToldInItsOwnWords) {
    Machine machine;
    machine.listing.exitCode = 69;
    machine.listing.error = "launchctl: s6 is missing\nmore";
    EXPECT_EQ(findingsOf(machine.check(), ids::jobsUnknown).at(0).sentence,
              "Has failed with exit code 69: launchctl: s6 is missing.");
    machine.listing = {.error = "No such file or directory"};
    EXPECT_EQ(findingsOf(machine.check(), ids::jobsUnknown).at(0).sentence,
              "Can't be run: No such file or directory.");
    machine.listing = {.started = true, .timedOut = true};
    EXPECT_THAT(findingsOf(machine.check(), ids::jobsUnknown).at(0).sentence,
                HasSubstr("ten seconds"));
    machine.listing = {.started = true, .took = std::chrono::milliseconds(900)};
    EXPECT_THAT(idsOf(machine.check()), ElementsAre(ids::jobsSlow));
}

TEST(SystemCheck, MissingDaemonCodeAndScriptsAreTold) {
    const Machine machine;
    std::filesystem::remove(machine.code + "/login_scout.sh");
    EXPECT_THAT(findingsOf(machine.check(), ids::daemonScriptMissing).at(0).sentence,
                HasSubstr("login_scout.sh"));
    std::filesystem::remove_all(machine.code);
    EXPECT_THAT(idsOf(machine.check()), ElementsAre(ids::daemonCodeMissing));
}

TEST(SystemCheck, ASessionWithoutDisplayOrSupervisorIsNoted) {
    Machine machine;
    machine.around.environment.clear();
    machine.lockHolder = std::nullopt;
    const Section section = machine.check();
    EXPECT_THAT(idsOf(section), ElementsAre(ids::supervisorNotRunning, ids::displayMissing));
    EXPECT_EQ(worst(section), Level::note);
    machine.around.environment["WAYLAND_DISPLAY"] = "wayland-0";
    machine.tray = true;
    EXPECT_EQ(machine.fact("Display"), "wayland-0 (Wayland)");
    EXPECT_EQ(machine.fact("Status item"), "in the tray (StatusNotifierItem)");
    machine.tray = false;
    EXPECT_THAT(machine.fact("Status item"), HasSubstr("strip"));
}

TEST(SystemCheck, TheTrayIsTheOneThatTheSupervisorWouldTake) {
    Machine machine;
    EXPECT_EQ(machine.fact("Status item"), "a strip of its own, since there is no tray");
    machine.embeddedTray = true;
    EXPECT_EQ(machine.fact("Status item"), "in the tray (XEmbed)");
    machine.tray = true;
    EXPECT_EQ(machine.fact("Status item"), "in the tray (StatusNotifierItem)");
    EXPECT_THAT(machine.check().findings, IsEmpty());
}

TEST(SystemCheck, ADisplayThatDoesNotAnswerIsTold) {
    Machine machine;
    machine.embeddedTray = std::nullopt;
    EXPECT_THAT(idsOf(machine.check()), ElementsAre(ids::displaySilent));
    EXPECT_EQ(machine.fact("Display"), ":0 (doesn't answer)");
    EXPECT_EQ(machine.fact("Status item"), "none, for want of a display");
    machine.around.environment["WAYLAND_DISPLAY"] = "wayland-0";
    EXPECT_EQ(machine.fact("Display"), ":0 (doesn't answer), wayland-0 (Wayland)");
    EXPECT_EQ(machine.fact("Status item"), "a strip of its own, since there is no tray");
    machine.around.environment.erase("DISPLAY");
    EXPECT_THAT(machine.check().findings, IsEmpty()) << "of no X server nothing is asked";
}

TEST(SystemCheck, OrphansAreTheToolsWhoseParentTakesInOrphans) {
    const std::vector<Process> processes{
        {1, 0, {"/sbin/init"}},
        {50, 1, {"/lib/systemd/systemd", "--user"}},
        {60, 50, {"/usr/bin/node", "/home/x/.local/bin/claude", "--token", "hidden"}},
        {61, 1, {"/opt/homebrew/bin/codex"}},
        {62, 70, {"/opt/homebrew/bin/gemini"}},
        {63, 1, {"gemini"}},
        {65, 1, {"/usr/bin/gemini"}, true},
        {66, 1, {"/usr/bin/gemini-like"}},
        {64, 1, {"/usr/bin/vi", "/a/b", "/c", "/usr/bin/qwen"}}};
    const auto left = orphanedTools(processes);
    ASSERT_THAT(left, SizeIs(2));
    EXPECT_EQ(left[0].id, 60);
    EXPECT_EQ(left[0].name, "claude");
    EXPECT_EQ(left[1].name, "codex");
}

TEST(SystemCheck, ADaemonWithoutAJobIsAStray) {
    Machine machine;
    const auto daemon = [](std::int64_t id, const std::string& role) {
        return Process{id, 1, {"/usr/bin/python3", "-m", "provider_telegramd", "--dept", role}};
    };
    machine.processes = {
        daemon(7, "ops"), daemon(8, "gone"), {9, 1, {"grep", "provider_telegramd"}}};
    machine.listing.output += "7\t0\t" + labelOf("ops") + "\n";
    const auto found = findingsOf(machine.check(), ids::strayDaemon);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].subject, "gone");
    machine.listing.exitCode = 69;
    EXPECT_THAT(idsOf(machine.check()), Not(Contains(ids::strayDaemon)));
}

TEST(SystemCheck, FailingSignInsAreTold) {
    const Machine machine;
    machine.write(machine.constants.reauthAlertsFile, R"({"gemini":{"since":"2026-03-04T05"}})");
    const auto found = findingsOf(machine.check(), ids::signInFailing);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].sentence, "The daemons can't sign in since 2026-03-04.");
}

void run(const std::string& path, const char* sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
}

constexpr const char* makeTable =
    "CREATE TABLE agent_events (id INTEGER PRIMARY KEY, dept TEXT, model TEXT);"
    "INSERT INTO agent_events (dept, model) VALUES ('ops', 'one'), ('ops', 'two'), ('ops', NULL);";

TEST(EventTable, IsReadAsAPollReadsIt) {
    const DoctorHome home;
    const std::string path = home.home.at("a?b%c#d.db");
    EXPECT_EQ(readEvents(path).value(), std::nullopt);
    run(path, makeTable);
    const auto table = readEvents(path).value();
    ASSERT_TRUE(table);
    EXPECT_EQ(table->events, 3);
    EXPECT_THAT(table->models,
                ElementsAre(std::pair<const std::string, std::string>("ops", "two")));
}

TEST(EventTable, IsReadWhileADaemonWritesAndLeavesNoTrace) {
    const DoctorHome home;
    const std::string path = home.home.at("governor.db");
    run(path, "PRAGMA journal_mode=WAL");
    sqlite3* writer = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &writer), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(writer, makeTable, nullptr, nullptr, nullptr), SQLITE_OK);
    ASSERT_TRUE(std::filesystem::exists(path + "-shm"));
    const auto table = readEvents(path);
    ASSERT_TRUE(table) << table.error();
    EXPECT_EQ((*table)->events, 3) << "what isn't in the file itself yet";
    sqlite3_close(writer);
    const auto count = [&home] {
        return std::distance(std::filesystem::directory_iterator(home.home.path()), {});
    };
    const auto before = count();
    EXPECT_EQ((*readEvents(path))->events, 3);
    EXPECT_EQ(count(), before);
}

TEST(EventTable, ThatIsNoneIsAReason) {
    const DoctorHome home;
    home.write(home.constants.governorDBPath,
               "no database at all, but long enough to be looked at");
    EXPECT_FALSE(readEvents(home.constants.governorDBPath));
    home.write(home.constants.governorDBPath, "");
    EXPECT_EQ(readEvents(home.constants.governorDBPath).value()->events, 0);
}

} // namespace
} // namespace varnhold::doctor
