#include "platform/qt/qt_processes.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>

#include "base/text.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using platform::EnvironmentMap;
using platform::ProcessRequest;
using platform::ProcessResult;
using platform::QtProcesses;
using platform::Stream;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

ProcessRequest shell(const std::string& script, const std::vector<std::string>& words = {}) {
    ProcessRequest request{.program = "/bin/sh",
                           .arguments = {"-c", script, "sh"},
                           .standardOutput = Stream::captured,
                           .standardError = Stream::captured};
    request.arguments.insert(request.arguments.end(), words.begin(), words.end());
    return request;
}

ProcessResult runShell(const std::string& script, const std::vector<std::string>& words = {}) {
    return QtProcesses().run(shell(script, words));
}

ProcessResult printEnvironment(const std::optional<EnvironmentMap>& environment) {
    return QtProcesses().run({.program = "/usr/bin/env",
                              .arguments = {},
                              .environment = environment,
                              .standardOutput = Stream::captured});
}

TEST(QtProcesses, GiveExactlyTheEnvironmentThatIsAskedFor) {
    const ProcessResult result =
        printEnvironment(EnvironmentMap{{"PLAIN", "1"}, {"OTHER", "a=b c"}, {"EMPTY", ""}});
    ASSERT_TRUE(result.started) << result.startError;
    const auto lines = text::split(result.standardOutput, '\n');
    EXPECT_THAT(lines, UnorderedElementsAre("PLAIN=1", "OTHER=a=b c", "EMPTY=", ""));
}

TEST(QtProcesses, GiveNoVariableAtAllIfNoneIsAskedFor) {
    const ProcessResult result = printEnvironment(EnvironmentMap{});
    ASSERT_TRUE(result.started) << result.startError;
    EXPECT_EQ(result.standardOutput, "");
}

TEST(QtProcesses, PassTheirOwnEnvironmentOnWithoutAnother) {
    ASSERT_EQ(::setenv("VARNHOLD_INHERITED", "yes", 1), 0); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(runShell("printf %s \"$VARNHOLD_INHERITED\"").standardOutput, "yes");
}

TEST(QtProcesses, PassArgumentsAsTheyAre) {
    EXPECT_EQ(runShell(R"(for each; do printf '<%s>' "$each"; done)",
                       {"", " a  b ", "\"'$x\\", "é⚖️\n", "*"})
                  .standardOutput,
              "<>< a  b ><\"'$x\\><é⚖️\n><*>");
}

TEST(QtProcesses, TellAnExitFromASignal) {
    const ProcessResult exited = runShell("exit 9");
    EXPECT_TRUE(exited.started);
    EXPECT_FALSE(exited.signalled);
    EXPECT_EQ(exited.status, 9);
    const ProcessResult killed = runShell("kill -9 $$");
    EXPECT_TRUE(killed.started);
    EXPECT_TRUE(killed.signalled);
    EXPECT_EQ(killed.status, 9);
}

TEST(QtProcesses, SayWhyAMissingProgramDidNotRun) {
    const ProcessResult result = QtProcesses().run({.program = "/nowhere/at/all", .arguments = {}});
    EXPECT_FALSE(result.started);
    EXPECT_FALSE(result.signalled);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.startError, Not(::testing::IsEmpty()));
}

TEST(QtProcesses, TakeAnyAmountOfOutputOnBothStreams) {
    const ProcessResult result = runShell(
        "head -c 1000000 /dev/zero | tr '\\0' o; head -c 1000000 /dev/zero | tr '\\0' e >&2");
    EXPECT_EQ(result.standardOutput, std::string(1000000, 'o'));
    EXPECT_EQ(result.standardError, std::string(1000000, 'e'));
}

TEST(QtProcesses, GiveBackOnlyWhatIsToBeCaptured) {
    ProcessRequest request = shell("echo out; echo err >&2");
    request.standardError = Stream::discarded;
    const ProcessResult withoutErrors = QtProcesses().run(request);
    EXPECT_EQ(withoutErrors.standardOutput, "out\n");
    EXPECT_EQ(withoutErrors.standardError, "");
    request.standardOutput = Stream::discarded;
    request.standardError = Stream::captured;
    const ProcessResult withoutOutput = QtProcesses().run(request);
    EXPECT_EQ(withoutOutput.standardOutput, "");
    EXPECT_EQ(withoutOutput.standardError, "err\n");
}

TEST(QtProcesses, LeaveAChildNothingToRead) {
    const ProcessResult result = runShell("cat; echo end");
    EXPECT_EQ(result.standardOutput, "end\n");
}

TEST(QtProcesses, RunOnAnyThread) {
    auto first = std::async(std::launch::async, [] { return runShell("echo first"); });
    auto second = std::async(std::launch::async, [] { return runShell("echo second"); });
    EXPECT_EQ(first.get().standardOutput, "first\n");
    EXPECT_EQ(second.get().standardOutput, "second\n");
}

TEST(QtProcesses, StartWithoutWaitingForTheEnd) {
    const TemporaryHome home;
    const std::string question = home.at("question");
    const std::string answer = home.at("answer");
    for (const std::string& pipe : {question, answer}) {
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    }
    // The child can't end before it has been asked, and it is asked only after the call.
    QtProcesses().start({.program = "/bin/sh",
                         .arguments = {"-c", R"(read -r line <"$1"; echo "$line too" >"$2")", "sh",
                                       question, answer}});
    std::ofstream(question) << "you\n";
    std::string line;
    std::getline(std::ifstream(answer), line);
    EXPECT_EQ(line, "you too");
}

} // namespace
} // namespace varnhold::testing
