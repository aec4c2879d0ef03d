#include "platform/posix_processes.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include "base/text.h"
#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using platform::EnvironmentMap;
using platform::PosixProcesses;
using platform::ProcessRequest;
using platform::ProcessResult;
using platform::Stream;
using namespace std::chrono_literals;
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
    return PosixProcesses().run(shell(script, words));
}

ProcessResult printEnvironment(const std::optional<EnvironmentMap>& environment) {
    return PosixProcesses().run({.program = "/usr/bin/env",
                                 .arguments = {},
                                 .environment = environment,
                                 .standardOutput = Stream::captured});
}

TEST(PosixProcesses, GiveExactlyTheEnvironmentThatIsAskedFor) {
    const ProcessResult result =
        printEnvironment(EnvironmentMap{{"PLAIN", "1"}, {"OTHER", "a=b c"}, {"EMPTY", ""}});
    ASSERT_TRUE(result.started) << result.startError;
    const auto lines = text::split(result.standardOutput, '\n');
    EXPECT_THAT(lines, UnorderedElementsAre("PLAIN=1", "OTHER=a=b c", "EMPTY=", ""));
}

TEST(PosixProcesses, GiveNoVariableAtAllIfNoneIsAskedFor) {
    const ProcessResult result = printEnvironment(EnvironmentMap{});
    ASSERT_TRUE(result.started) << result.startError;
    EXPECT_EQ(result.standardOutput, "");
}

TEST(PosixProcesses, PassTheirOwnEnvironmentOnWithoutAnother) {
    ASSERT_EQ(::setenv("VARNHOLD_INHERITED", "yes", 1), 0); // NOLINT(concurrency-mt-unsafe)
    EXPECT_EQ(runShell("printf %s \"$VARNHOLD_INHERITED\"").standardOutput, "yes");
}

TEST(PosixProcesses, PassArgumentsAsTheyAre) {
    EXPECT_EQ(runShell(R"(for each; do printf '<%s>' "$each"; done)",
                       {"", " a  b ", "\"'$x\\", "é⚖️\n", "*"})
                  .standardOutput,
              "<>< a  b ><\"'$x\\><é⚖️\n><*>");
}

TEST(PosixProcesses, TellAnExitFromASignal) {
    const ProcessResult exited = runShell("exit 9");
    EXPECT_TRUE(exited.started);
    EXPECT_FALSE(exited.signalled);
    EXPECT_EQ(exited.status, 9);
    const ProcessResult killed = runShell("kill -9 $$");
    EXPECT_TRUE(killed.started);
    EXPECT_TRUE(killed.signalled);
    EXPECT_EQ(killed.status, 9);
}

TEST(PosixProcesses, SayWhyAMissingProgramDidNotRun) {
    const ProcessResult result =
        PosixProcesses().run({.program = "/nowhere/at/all", .arguments = {}});
    EXPECT_FALSE(result.started);
    EXPECT_FALSE(result.signalled);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.startError, Not(::testing::IsEmpty()));
}

TEST(PosixProcesses, TakeAnyAmountOfOutputOnBothStreams) {
    const ProcessResult result = runShell(
        "head -c 1000000 /dev/zero | tr '\\0' o; head -c 1000000 /dev/zero | tr '\\0' e >&2");
    EXPECT_EQ(result.standardOutput, std::string(1000000, 'o'));
    EXPECT_EQ(result.standardError, std::string(1000000, 'e'));
}

TEST(PosixProcesses, GiveBackOnlyWhatIsToBeCaptured) {
    ProcessRequest request = shell("echo out; echo err >&2");
    request.standardError = Stream::discarded;
    const ProcessResult withoutErrors = PosixProcesses().run(request);
    EXPECT_EQ(withoutErrors.standardOutput, "out\n");
    EXPECT_EQ(withoutErrors.standardError, "");
    request.standardOutput = Stream::discarded;
    request.standardError = Stream::captured;
    const ProcessResult withoutOutput = PosixProcesses().run(request);
    EXPECT_EQ(withoutOutput.standardOutput, "");
    EXPECT_EQ(withoutOutput.standardError, "err\n");
}

TEST(PosixProcesses, LeaveAChildNothingToRead) {
    const ProcessResult result = runShell("cat; echo end");
    EXPECT_EQ(result.standardOutput, "end\n");
}

TEST(PosixProcesses, RunOnAnyThread) {
    auto first = std::async(std::launch::async, [] { return runShell("echo first"); });
    auto second = std::async(std::launch::async, [] { return runShell("echo second"); });
    EXPECT_EQ(first.get().standardOutput, "first\n");
    EXPECT_EQ(second.get().standardOutput, "second\n");
}

TEST(PosixProcesses, StartWithoutWaitingForTheEnd) {
    const TemporaryHome home;
    const std::string question = home.at("question");
    const std::string answer = home.at("answer");
    for (const std::string& pipe : {question, answer}) {
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    }
    // The child can't end before it has been asked, and it is asked only after the call.
    PosixProcesses().start({.program = "/bin/sh",
                            .arguments = {"-c", R"(read -r line <"$1"; echo "$line too" >"$2")",
                                          "sh", question, answer}});
    std::ofstream(question) << "you\n";
    std::string line;
    std::getline(std::ifstream(answer), line);
    EXPECT_EQ(line, "you too");
}

// Descriptors that this process has open.
std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

TEST(PosixProcesses, LeaveNoDescriptorBehindHoweverAChildEnds) {
    PosixProcesses processes;
    ProcessRequest missing{.program = "/nowhere/at/all",
                           .arguments = {},
                           .standardOutput = Stream::captured,
                           .standardError = Stream::captured};
    ProcessRequest hung = shell("echo out; exec sleep 600");
    hung.deadline = 1ms;
    const auto before = openDescriptors();
    for (int i = 0; i < 20; ++i) {
        static_cast<void>(processes.run(missing));
        processes.start(missing);
        static_cast<void>(processes.run(hung));
        static_cast<void>(processes.run(shell("exit 3")));
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(PosixProcesses, SayThatThereIsNoDescriptorLeftAndRecover) {
    PosixProcesses processes;
    // A sanitizer that sees an object's type for the first time needs a descriptor to look at it.
    EXPECT_FALSE(processes.run({.program = "/nowhere"}).started);
    EXPECT_TRUE(processes.run(shell("echo out")).started);
    rlimit whole{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &whole), 0);
    rlimit none = whole;
    none.rlim_cur = static_cast<rlim_t>(::dup(STDIN_FILENO));
    ::close(static_cast<int>(none.rlim_cur));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const ProcessResult result = processes.run(shell("echo out"));
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &whole), 0);
    EXPECT_FALSE(result.started);
    EXPECT_THAT(result.startError, Not(::testing::IsEmpty()));
    EXPECT_EQ(processes.run(shell("echo out")).standardOutput, "out\n");
}

TEST(PosixProcesses, EndAChildAtItsDeadlineAndDropWhatItHasWritten) {
    const TemporaryHome home;
    ProcessRequest request = shell(R"(echo $$ >"$1"; echo out; exec sleep 600)", {home.at("pid")});
    request.deadline = 300ms;
    PosixProcesses processes;
    ProcessResult result = processes.run(request);
    // On a machine that busy the shell has not come to its first word yet.
    while (home.read(home.at("pid")).empty()) {
        *request.deadline *= 2;
        result = processes.run(request);
    }
    EXPECT_TRUE(result.started);
    EXPECT_TRUE(result.signalled);
    EXPECT_EQ(result.status, SIGKILL);
    EXPECT_EQ(result.standardOutput, "");
    const pid_t child = std::stoi(home.read(home.at("pid")));
    siginfo_t end{};
    ::waitid(P_PID, static_cast<id_t>(child), &end, WEXITED | WNOWAIT);
    EXPECT_EQ(end.si_status, SIGKILL);
}

TEST(PosixProcesses, GiveAChildThatMeetsItsDeadlineWhatItSays) {
    ProcessRequest request = shell("echo out; exit 4");
    request.deadline = 1h;
    const ProcessResult result = PosixProcesses().run(request);
    EXPECT_EQ(result.status, 4);
    EXPECT_EQ(result.standardOutput, "out\n");
}

TEST(PosixProcesses, DoNotWaitForWhatAChildHasLeftBehind) {
    const TemporaryHome home;
    const std::string pipe = home.at("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    // The one that is left behind holds the output open until this test lets it go.
    const ProcessResult result =
        runShell(R"(sh -c 'read -r line <"$1"' sh "$1" & echo out)", {pipe});
    EXPECT_EQ(result.standardOutput, "out\n");
    std::ofstream(pipe) << "go\n";
}

TEST(PosixProcesses, ReapWhatTheyHaveStartedAtTheNextCall) {
    const TemporaryHome home;
    PosixProcesses processes;
    processes.start(
        {.program = "/bin/sh", .arguments = {"-c", R"(echo $$ >"$1")", "sh", home.at("pid")}});
    std::string pid;
    while (pid.empty() || pid.back() != '\n') {
        pid = home.read(home.at("pid"));
    }
    const auto child = static_cast<id_t>(std::stoi(pid));
    siginfo_t end{};
    ASSERT_EQ(::waitid(P_PID, child, &end, WEXITED | WNOWAIT), 0);
    static_cast<void>(processes.run(shell("exit 0")));
    EXPECT_EQ(::waitid(P_PID, child, &end, WEXITED | WNOHANG | WNOWAIT), -1);
}

TEST(PosixProcesses, StartInASessionOfItsOwn) {
    const TemporaryHome home;
    const std::string answer = home.at("answer");
    ASSERT_EQ(::mkfifo(answer.c_str(), 0600), 0);
    PosixProcesses processes;
    processes.start(
        {.program = "/bin/sh", .arguments = {"-c", R"(ps -o sid= -p $$ >"$1")", "sh", answer}});
    long session = 0;
    std::ifstream(answer) >> session;
    EXPECT_GT(session, 0);
    EXPECT_NE(session, ::getsid(0));
}

TEST(PosixProcesses, GiveAChildNoneOfTheirOwnBlockedOrIgnoredSignals) {
    sigset_t blocked;
    sigset_t before;
    ::sigemptyset(&blocked);
    ::sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const auto handler = std::signal(SIGPIPE, SIG_IGN);
    const ProcessResult terminated = runShell("kill -TERM $$; echo deaf");
    const ProcessResult broken = runShell("kill -PIPE $$; echo deaf");
    std::signal(SIGPIPE, handler);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(terminated.status, SIGTERM);
    EXPECT_EQ(terminated.standardOutput, "");
    EXPECT_EQ(broken.status, SIGPIPE);
    EXPECT_EQ(broken.standardOutput, "");
}

TEST(PosixProcesses, ReadAChildWhoseEndIsThrownAway) {
    const auto handler = std::signal(SIGCHLD, SIG_IGN);
    const ProcessResult result = runShell("echo out");
    std::signal(SIGCHLD, handler);
    EXPECT_TRUE(result.started);
    EXPECT_EQ(result.standardOutput, "out\n");
}

} // namespace
} // namespace varnhold::testing
