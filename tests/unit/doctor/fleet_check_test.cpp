#include "doctor/fleet_check.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "base/files.h"
#include "doctor/catalogue.h"
#include "doctor_home.h"
#include "lifecycle/launch_agent.h"

namespace varnhold::doctor {
namespace {

using testing::botRecord;
using ::testing::Contains;
using testing::DoctorHome;
using ::testing::ElementsAre;
using testing::findingsOf;
using ::testing::HasSubstr;
using testing::idsOf;
using ::testing::IsEmpty;
using testing::labelOf;
using ::testing::SizeIs;

struct Fleet : DoctorHome {
    // Records of bots, and rows of the listing behind its header.
    Section check(const std::string& bots, const std::string& rows = "") {
        write(constants.botsConfigFile, "[" + bots + "]");
        listing.output = "PID\tStatus\tLabel\n" + rows;
        jobs = findJobs(around);
        return checkFleet(around, jobs);
    }

    // A loaded job's folder, with the definition that is made now unless another is given.
    void loaded(const std::string& role, const std::function<void(PropertyList&)>& change = {}) {
        BotConfig bot = decodeBots("[" + botRecord(role) + "]")->at(0);
        PropertyList list = agentDefinition(constants, around.bundlePath, files::exists, bot);
        if (change) {
            change(list);
        }
        write(folderOf(role) + "/job.plist", *encodePropertyList(list));
    }

    [[nodiscard]] std::string folderOf(const std::string& role) const {
        return around.runtimeFolder + "/jobs/" + labelOf(role);
    }

    Jobs jobs;
};

std::string row(const std::string& process, int status, const std::string& role) {
    return process + "\t" + std::to_string(status) + "\t" + labelOf(role) + "\n";
}

TEST(FleetCheck, AFleetThatRunsHasNothingToTell) {
    Fleet fleet;
    fleet.runsFor[71] = std::chrono::seconds(90);
    const Section section = fleet.check(botRecord("doctor-ops"), row("71", 0, "doctor-ops"));
    EXPECT_THAT(idsOf(section), ElementsAre(ids::propertyListMissing));
    fleet.loaded("doctor-ops");
    const Section again = fleet.check(botRecord("doctor-ops"), row("71", 0, "doctor-ops"));
    EXPECT_THAT(again.findings, IsEmpty());
    EXPECT_EQ(again.summary, "1 bot: 1 running");
    EXPECT_EQ(again.data["bots"][0]["pid"], 71);
    EXPECT_EQ(again.data["bots"][0]["runsForSeconds"], 90);
    EXPECT_EQ(again.data["bots"][0]["manager"], "s6");
}

TEST(FleetCheck, ACrashIsToldWithItsCodeOrItsSignal) {
    Fleet fleet;
    fleet.loaded("doctor-a");
    fleet.loaded("doctor-b");
    fleet.write(fleet.folderOf("doctor-a") + "/starts", "7");
    const Section section = fleet.check(botRecord("doctor-a") + "," + botRecord("doctor-b"),
                                        row("-", 3, "doctor-a") + row("-", -9, "doctor-b"));
    const auto found = findingsOf(section, ids::botCrashed);
    ASSERT_THAT(found, SizeIs(2));
    EXPECT_EQ(found[0].sentence, "The daemon ended with exit code 3, after 7 starts.");
    EXPECT_EQ(found[0].level, Level::fault);
    EXPECT_EQ(found[1].sentence, "The daemon ended with signal 9 (SIGKILL).");
    EXPECT_EQ(section.data["bots"][0]["state"], "crashed");
    EXPECT_EQ(section.data["bots"][0]["lastStatus"], 3);
    EXPECT_EQ(section.data["bots"][0]["starts"], 7);
}

TEST(FleetCheck, ADaemonThatHasEndedWithSuccessIsNoFault) {
    Fleet fleet;
    fleet.loaded("doctor-a");
    const auto found =
        findingsOf(fleet.check(botRecord("doctor-a"), row("-", 0, "doctor-a")), ids::botEnded);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].level, Level::note);
}

TEST(FleetCheck, AFileInTheDataFoldersPlaceIsAFault) {
    Fleet fleet;
    fleet.write(fleet.constants.appSupportDir + "/data/doctor-a", "");
    const auto found = findingsOf(fleet.check(botRecord("doctor-a")), ids::botFolderBlocked);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].level, Level::fault);
    std::filesystem::remove(fleet.constants.appSupportDir + "/data/doctor-a");
    fleet.home.makeFolder(fleet.constants.appSupportDir + "/data/doctor-a");
    EXPECT_THAT(findingsOf(fleet.check(botRecord("doctor-a")), ids::botFolderBlocked), IsEmpty());
}

TEST(FleetCheck, ACrashIsShownWithTheLastLinesOfItsLog) {
    Fleet fleet;
    const std::string log = errorLogPath("doctor-crash-test");
    std::ofstream(log) << "one\n\ntwo\nthree\nfour\nValueError: five\n";
    const Section section =
        fleet.check(botRecord("doctor-crash-test"), row("-", 1, "doctor-crash-test"));
    std::filesystem::remove(log);
    const auto found = findingsOf(section, ids::botCrashed);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].lines, ElementsAre("two", "three", "four", "ValueError: five"));
}

TEST(FleetCheck, ABotThatHasJustComeBackAfterABadEndIsAFault) {
    Fleet fleet;
    fleet.loaded("doctor-a");
    const auto flapping = [&](std::chrono::seconds time, int status) {
        fleet.runsFor[5] = time;
        return findingsOf(fleet.check(botRecord("doctor-a"), row("5", status, "doctor-a")),
                          ids::botFlapping);
    };
    ASSERT_THAT(flapping(std::chrono::seconds(4), 3), SizeIs(1));
    EXPECT_THAT(flapping(std::chrono::seconds(4), 3)[0].sentence, HasSubstr("exit code 3"));
    EXPECT_THAT(flapping(std::chrono::seconds(61), 3), IsEmpty());
    EXPECT_THAT(flapping(std::chrono::seconds(4), 0), IsEmpty());
}

TEST(FleetCheck, WhatKeptADaemonFromBeingStartedIsToldInWords) {
    Fleet fleet;
    fleet.loaded("doctor-a");
    fleet.write(fleet.folderOf("doctor-a") + "/spawn-trouble",
                "/usr/bin/python9: No such file or directory\n");
    const Section section = fleet.check(botRecord("doctor-a"), row("-", 78, "doctor-a"));
    const auto found = findingsOf(section, ids::botNotSpawned);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].sentence, HasSubstr("/usr/bin/python9: No such file"));
    EXPECT_EQ(endInWords(78), "exit code 78 (its program could not be spawned)");
}

TEST(FleetCheck, OfAnOutdatedAgentOnlyNamesOfVariablesAreTold) {
    Fleet fleet;
    fleet.loaded("doctor-a", [](PropertyList& list) {
        list.environmentVariables["OPENAI_API_KEY"] = "old-value-of-a-key";
        list.environmentVariables["TELEGRAM_BOT_TOKEN"] = "old-value-of-a-token";
        list.environmentVariables.erase("DAEMON_DATA_DIR");
        list.programArguments[0] = "/usr/bin/python2";
    });
    fleet.runsFor[5] = std::chrono::seconds(500);
    const Section section = fleet.check(botRecord("doctor-a"), row("5", 0, "doctor-a"));
    const auto found = findingsOf(section, ids::agentOutdated);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].sentence,
              "What it was started with is out of date: DAEMON_DATA_DIR is new, "
              "TELEGRAM_BOT_TOKEN has changed, OPENAI_API_KEY is gone and the interpreter is "
              "another.");
}

TEST(FleetCheck, AStaleOrBrokenPropertyListIsTold) {
    Fleet fleet;
    const std::string path = propertyListPath(fleet.constants, labelOf("doctor-a"));
    fleet.write(path, "no list");
    EXPECT_THAT(idsOf(fleet.check(botRecord("doctor-a"))), Contains(ids::propertyListBroken));
    BotConfig bot = decodeBots("[" + botRecord("doctor-a") + "]")->at(0);
    bot.token = "another-token";
    fleet.write(path, *encodePropertyList(agentDefinition(fleet.constants, fleet.around.bundlePath,
                                                          files::exists, bot)));
    const auto found = findingsOf(fleet.check(botRecord("doctor-a")), ids::propertyListStale);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].sentence, HasSubstr("TELEGRAM_BOT_TOKEN has changed"));
    EXPECT_EQ(found[0].level, Level::note);
    EXPECT_THAT(idsOf(fleet.check(botRecord("doctor\\u0001a"))),
                Contains(ids::propertyListImpossible));
}

TEST(FleetCheck, AFleetOfWhichNothingIsLoadedIsOneFinding) {
    Fleet fleet;
    const std::string three = botRecord("doctor-a") + "," + botRecord("doctor-b") + "," +
                              botRecord("doctor-c", R"(,"isPaused":true)");
    const Section none = fleet.check(three);
    EXPECT_THAT(idsOf(none), ElementsAre(ids::fleetNotLoaded));
    EXPECT_THAT(none.findings[0].sentence, HasSubstr("2 bots"));
    fleet.loaded("doctor-a");
    fleet.runsFor[5] = std::chrono::seconds(500);
    const Section one = fleet.check(three, row("5", 0, "doctor-a"));
    EXPECT_THAT(idsOf(one), ElementsAre(ids::botNotLoaded));
    EXPECT_EQ(one.findings[0].subject, "The doctor-b");
}

TEST(FleetCheck, NobodyKnowsWhatRunsWithoutAListing) {
    Fleet fleet;
    fleet.listing.exitCode = 69;
    const Section section = fleet.check(botRecord("doctor-a"));
    EXPECT_THAT(section.findings, IsEmpty()) << "the check of the system tells of it";
    EXPECT_EQ(section.data["bots"][0]["state"], "unknown");
}

TEST(FleetCheck, APausedBotThatStillRunsIsAWarning) {
    Fleet fleet;
    fleet.loaded("doctor-a");
    fleet.runsFor[5] = std::chrono::seconds(500);
    const auto found = findingsOf(
        fleet.check(botRecord("doctor-a", R"(,"isPaused":true)"), row("5", 0, "doctor-a")),
        ids::botPausedButLoaded);
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].command, "/opt/bin/launchctl bootout gui/$(id -u)/" + labelOf("doctor-a"));
}

TEST(FleetCheck, RecordsThatGetInEachOthersWayAreTold) {
    Fleet fleet;
    const std::string other =
        R"({"icon":"x","title":"Other","token":"t","role":"doctor-a","launchdLabel":)"
        R"("com.ostrelleai.doctor-x.telegramd","service":"Slack"})";
    const std::string blank =
        R"({"icon":"x","title":"Blank","token":"t","role":"a b","launchdLabel":)"
        R"("com.ostrelleai.a b.telegramd","service":"Slack"})";
    const std::string unstartable =
        R"({"icon":"x","title":"No","token":"t","role":"","launchdLabel":"mine","service":"Slack"})";
    const Section section = fleet.check(botRecord("doctor-a") + "," + botRecord("doctor-a") + "," +
                                        other + "," + blank + "," + unstartable);
    const auto ids = idsOf(section);
    EXPECT_THAT(ids, Contains(ids::labelTwice));
    EXPECT_THAT(ids, Contains(ids::roleTwice));
    EXPECT_THAT(ids, Contains(ids::labelOfOtherRole));
    EXPECT_THAT(ids, Contains(ids::roleBlank));
    EXPECT_THAT(ids, Contains(ids::roleEmpty));
    EXPECT_THAT(ids, Contains(ids::botNotStartable));
}

TEST(FleetCheck, ALabelWithABlankIsFoundInTheListingAllTheSame) {
    const auto jobs = parseJobs("PID\tStatus\tLabel\n12\t0\tcom.ostrelleai.a b.telegramd\n");
    ASSERT_THAT(jobs, SizeIs(1));
    EXPECT_EQ(jobs[0].label, "com.ostrelleai.a b.telegramd");
    EXPECT_EQ(jobs[0].process, 12);
}

TEST(FleetCheck, TheGovernorIsListedAndNotMissed) {
    Fleet fleet;
    const Section section = fleet.check(
        R"({"icon":"x","title":"Governor AI","token":"","role":"governor","launchdLabel":)"
        R"("com.ostrelleai.governor","service":"Telegram"})");
    EXPECT_THAT(section.findings, IsEmpty());
    EXPECT_EQ(section.data["bots"][0]["state"], "listed-only");
}

TEST(FleetCheck, AJobThatNoBotStandsForIsAWarning) {
    Fleet fleet;
    const Section section =
        fleet.check("", row("9", 0, "doctor-gone") + "1\t0\tcom.example.other\n");
    EXPECT_THAT(idsOf(section), ElementsAre(ids::jobOfNobody, ids::fleetEmpty));
    EXPECT_EQ(section.findings[0].subject, labelOf("doctor-gone"));
}

TEST(FleetCheck, ALongSilenceAndARefusedLogAreTold) {
    Fleet fleet;
    fleet.loaded("doctor-silent-test");
    fleet.runsFor[5] = std::chrono::hours(5);
    const std::string log = logPath("doctor-silent-test");
    std::ofstream(log) << "hello\n";
    const auto silent = [&] {
        return findingsOf(
            fleet.check(botRecord("doctor-silent-test"), row("5", 0, "doctor-silent-test")),
            ids::botSilent);
    };
    fleet.around.now = std::chrono::system_clock::now() + std::chrono::hours(3);
    ASSERT_THAT(silent(), SizeIs(1));
    EXPECT_THAT(silent()[0].lines, ElementsAre("hello"));
    fleet.around.now = std::chrono::system_clock::now();
    EXPECT_THAT(silent(), IsEmpty());
    std::filesystem::remove(log);
    EXPECT_THAT(silent().at(0).sentence, HasSubstr("no log"));
    fleet.write(fleet.folderOf("doctor-silent-test") + "/log-trouble",
                "StandardOutPath: not ours\n");
    const auto refused =
        findingsOf(fleet.check(botRecord("doctor-silent-test"), row("5", 0, "doctor-silent-test")),
                   ids::logRefused);
    ASSERT_THAT(refused, SizeIs(1));
    EXPECT_THAT(refused[0].sentence, HasSubstr("not ours"));
}

} // namespace
} // namespace varnhold::doctor
