#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <sstream>
#include <string>
#include <sys/stat.h>

#include "fake_manager.h"
#include "launchctl/launchctl.h"
#include "support/temporary_home.h"

namespace varnhold::services {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

constexpr std::uint64_t ownId = 501;
constexpr const char* agentLabel = "com.example.agent";
constexpr const char* inputOutputError = "Bootstrap failed: 5: Input/output error\n";

class Perform : public ::testing::Test {
protected:
    struct Said {
        int code;
        std::string out;
        std::string error;
    };

    Said say(const Command& command) {
        std::ostringstream out;
        std::ostringstream error;
        const auto choose = [this](Purpose) -> Result<std::shared_ptr<ServiceManager>> {
            ++asked;
            if (!away.empty()) {
                return failure(away);
            }
            return chosen;
        };
        const int code = perform(command, choose, ownId, out, error);
        return {code, out.str(), error.str()};
    }

    std::string writeList(const std::string& labelToWrite) {
        std::string path = home.at(labelToWrite + ".plist");
        home.write(path, encodePropertyList(listOf(labelToWrite)).value());
        return path;
    }

    static PropertyList listOf(const std::string& labelToUse) {
        return {.label = labelToUse, .programArguments = {"/bin/true"}};
    }

    void loadRunning() {
        manager.loaded[agentLabel] = {JobState{.label = {agentLabel}, .process = 447},
                                      listOf(agentLabel)};
    }

    void expectNothingDone(const Said& said) {
        EXPECT_EQ(said.out, "");
        EXPECT_THAT(manager.calls, IsEmpty());
    }

    testing::TemporaryHome home;
    std::shared_ptr<FakeManager> chosen = std::make_shared<FakeManager>();
    FakeManager& manager = *chosen;
    int asked = 0;    // how often a manager was wanted
    std::string away; // why there is none; empty while there is one
};

TEST_F(Perform, HelpAndVersionNeedNoManager) {
    EXPECT_EQ(say(Help{}).code, 0);
    EXPECT_EQ(say(Help{}).out, helpText());
    const Said version = say(Version{});
    EXPECT_EQ(version.code, 0);
    EXPECT_THAT(version.out, StartsWith("launchctl of Varnhold "));
    EXPECT_EQ(version.out.back(), '\n');
    EXPECT_EQ(asked, 0);
}

TEST_F(Perform, ListShowsTheTableOfJobs) {
    loadRunning();
    const Said said = say(List{});
    EXPECT_EQ(said.code, 0);
    EXPECT_EQ(said.out, "PID\tStatus\tLabel\n447\t0\tcom.example.agent\n");
    EXPECT_EQ(said.error, "");
}

TEST_F(Perform, ListOfAManagerThatIsAwayGivesNoTable) {
    manager.broken = "no answer";
    const Said said = say(List{});
    EXPECT_EQ(said.code, 69);
    EXPECT_EQ(said.out, "");
    EXPECT_EQ(said.error, "launchctl: no answer\n");
}

TEST_F(Perform, ListOfALabelShowsItsProperties) {
    loadRunning();
    const Said said = say(ListJob{{agentLabel}});
    EXPECT_EQ(said.code, 0);
    EXPECT_THAT(said.out, HasSubstr("\t\"PID\" = 447;\n"));
    EXPECT_EQ(said.error, "");
}

TEST_F(Perform, ListOfAnUnknownLabelSaysSo) {
    const Said said = say(ListJob{{"x"}});
    EXPECT_EQ(said.code, 113);
    EXPECT_EQ(said.out, "");
    EXPECT_EQ(said.error, "Could not find service \"x\" in domain for port\n");
}

TEST_F(Perform, BootstrapHandsTheFileOverAsItIs) {
    const std::string path = writeList(agentLabel);
    const Said said = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(said.code, 0);
    EXPECT_EQ(said.out + said.error, "");
    EXPECT_THAT(manager.contents, ElementsAre(home.read(path)));
}

TEST_F(Perform, BootstrapOfALoadedJobFailsAndTouchesNothing) {
    loadRunning();
    const Said said = say(Bootstrap{ownId, {writeList(agentLabel)}});
    EXPECT_EQ(said.code, 5);
    EXPECT_EQ(said.error, std::string(inputOutputError) +
                              "Try re-running the command as root for richer errors.\n");
    expectNothingDone(said);
}

TEST_F(Perform, BootstrapOfAMissingFileNamesIt) {
    const Said said = say(Bootstrap{ownId, {home.at("none.plist")}});
    EXPECT_EQ(said.code, 5);
    EXPECT_THAT(said.error, StartsWith(inputOutputError + home.at("none.plist") + ": "));
    expectNothingDone(said);
}

TEST_F(Perform, BootstrapOfABadFileSaysWhatIsWrongWithIt) {
    const std::string path = home.at("bad.plist");
    home.write(path, "<plist><dict><key>Label</key></dict></plist>");
    const Said bad = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(bad.code, 5);
    EXPECT_THAT(bad.error, StartsWith(inputOutputError + path + ": "));
    home.write(path, "<plist><dict><key>Label</key><string>x</string></dict></plist>");
    const Said noProgram = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(noProgram.error,
              inputOutputError + path + ": ProgramArguments is missing or empty\n");
    expectNothingDone(noProgram);
}

TEST_F(Perform, BootstrapOfSeveralGoesOnAfterAFailureAndGivesTheFirstCode) {
    const Said said =
        say(Bootstrap{ownId, {writeList("com.a"), home.at("none"), writeList("com.b")}});
    EXPECT_EQ(said.code, 5);
    EXPECT_THAT(manager.calls, ElementsAre("bootstrap com.a", "bootstrap com.b"));
}

TEST_F(Perform, BootstrapDoesNotWaitForTheEndOfAPipe) {
    const std::string path = home.at("pipe.plist");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const Said said = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(said.code, 5);
    EXPECT_EQ(said.error, inputOutputError + path + ": not a file\n");
    expectNothingDone(said);
}

TEST_F(Perform, BootstrapOfAFolderLoadsItsPropertyListsInTheOrderOfTheirNames) {
    writeList("com.b");
    writeList("com.a");
    home.write(home.at("notes.txt"), "no property list");
    home.write(home.at("com.c.plist.bak"), "neither");
    home.makeFolder(home.at("folder.plist"));
    const Said said = say(Bootstrap{ownId, {home.path()}});
    EXPECT_EQ(said.code, 0);
    EXPECT_EQ(said.out + said.error, "");
    EXPECT_THAT(manager.calls, ElementsAre("bootstrap com.a", "bootstrap com.b"));
}

TEST_F(Perform, BootstrapOfAFolderGoesOnAfterAFileThatIsLoadedAlreadyOrBad) {
    loadRunning();
    writeList(agentLabel);
    writeList("com.z");
    home.write(home.at("bad.plist"), "");
    const Said said = say(Bootstrap{ownId, {home.path()}});
    EXPECT_EQ(said.code, 5);
    EXPECT_THAT(said.error, HasSubstr(home.at("bad.plist") + ": "));
    EXPECT_THAT(manager.calls, ElementsAre("bootstrap com.z"));
}

TEST_F(Perform, BootstrapOfAnEmptyFolderHasNothingToDo) {
    home.makeFolder(home.at("empty"));
    EXPECT_EQ(say(Bootstrap{ownId, {home.at("empty")}}).code, 0);
    EXPECT_EQ(say(Bootstrap{ownId, {home.at("missing")}}).code, 5);
}

TEST_F(Perform, BootstrapTellsWhyAManagerRefused) {
    manager.broken = "the disk is full";
    const std::string path = writeList(agentLabel);
    const Said said = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(said.code, 69);
    EXPECT_EQ(said.error, "launchctl: " + path + ": the disk is full\n");
}

TEST_F(Perform, BootstrapOfALabelThatNoManagerCanTakeBlamesTheFile) {
    manager.broken = "no answer";
    const std::string path = home.at("bad.plist");
    home.write(path, encodePropertyList(listOf("a\nb")).value());
    const Said said = say(Bootstrap{ownId, {path}});
    EXPECT_EQ(said.code, 5);
    EXPECT_THAT(said.error, StartsWith(inputOutputError + path + ": "));
}

TEST_F(Perform, BootoutKickstartAndStopOfALoadedJobSayNothing) {
    loadRunning();
    for (const Command& command : std::initializer_list<Command>{
             Bootout{ownId, {agentLabel}}, Kickstart{ownId, {agentLabel}, false},
             Kickstart{ownId, {agentLabel}, true}, Stop{{agentLabel}}}) {
        const Said said = say(command);
        EXPECT_EQ(said.code, 0);
        EXPECT_EQ(said.out + said.error, "");
    }
    EXPECT_THAT(manager.calls,
                ElementsAre("bootout com.example.agent", "kickstart com.example.agent",
                            "kickstart -k com.example.agent", "stop com.example.agent"));
}

TEST_F(Perform, BootoutAndStopOfAnUnknownLabelFindNoProcess) {
    const Said bootout = say(Bootout{ownId, {"x"}});
    EXPECT_EQ(bootout.code, 3);
    EXPECT_EQ(bootout.error, "Boot-out failed: 3: No such process\n");
    const Said stop = say(Stop{{"x"}});
    EXPECT_EQ(stop.code, 3);
    EXPECT_EQ(stop.error, "Stop failed: 3: No such process\n");
    expectNothingDone(stop);
}

TEST_F(Perform, KickstartOfAnUnknownLabelFindsNoService) {
    const Said said = say(Kickstart{ownId, {"x"}, true});
    EXPECT_EQ(said.code, 113);
    EXPECT_EQ(said.error, "Could not find service \"x\" in domain for port\n");
    expectNothingDone(said);
}

TEST_F(Perform, AnotherUsersDomainIsRefused) {
    loadRunning();
    const std::string rest = ": 125: Domain does not support specified action\n";
    const Said bootstrap = say(Bootstrap{502, {writeList("com.new")}});
    EXPECT_EQ(bootstrap.code, 125);
    EXPECT_EQ(bootstrap.error, "Bootstrap failed" + rest);
    const Said bootout = say(Bootout{502, {agentLabel}});
    EXPECT_EQ(bootout.code, 125);
    EXPECT_EQ(bootout.error, "Boot-out failed" + rest);
    const Said kickstart = say(Kickstart{0, {agentLabel}, true});
    EXPECT_EQ(kickstart.code, 125);
    EXPECT_EQ(kickstart.error, "Kickstart failed" + rest);
    expectNothingDone(kickstart);
}

TEST_F(Perform, AManagerThatIsAwayIsTold) {
    manager.broken = "no answer";
    for (const Command& command : std::initializer_list<Command>{
             ListJob{{agentLabel}}, Bootout{ownId, {agentLabel}},
             Kickstart{ownId, {agentLabel}, false}, Stop{{agentLabel}}}) {
        const Said said = say(command);
        EXPECT_EQ(said.code, 69);
        EXPECT_EQ(said.out, "");
        EXPECT_EQ(said.error, "launchctl: no answer\n");
    }
}

TEST_F(Perform, WithoutAManagerNothingIsDone) {
    away = "none answers";
    for (const Command& command : std::initializer_list<Command>{
             List{}, ListJob{{agentLabel}}, Bootstrap{ownId, {writeList(agentLabel)}},
             Bootout{ownId, {agentLabel}}, Kickstart{ownId, {agentLabel}, true},
             Stop{{agentLabel}}}) {
        const Said said = say(command);
        EXPECT_EQ(said.code, 69);
        EXPECT_EQ(said.error, "launchctl: none answers\n");
        expectNothingDone(said);
    }
}

} // namespace
} // namespace varnhold::services
