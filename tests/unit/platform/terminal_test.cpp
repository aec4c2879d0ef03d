#include "platform/terminal.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <string>
#include <vector>

namespace varnhold::platform {
namespace {

using ::testing::SizeIs;

auto onlyInstalled(const std::string& path) {
    return [path](const std::string& asked) { return asked == path; };
}

TEST(MacTerminal, ScriptsTheSystemsTerminal) {
    EXPECT_EQ(macTerminalRequest("/a b/login.sh", "claude"),
              (ProcessRequest{
                  .program = "/usr/bin/osascript",
                  .arguments = {"-e",
                                "tell application \"Terminal\" to do script \"'/a b/login.sh' "
                                "claude\"",
                                "-e", "tell application \"Terminal\" to activate"}}));
}

// The words after those that are the emulator's own.
std::vector<std::string> commandOf(const ProcessRequest& request) {
    const auto shell = std::find(request.arguments.begin(), request.arguments.end(), "/bin/sh");
    return {shell, request.arguments.end()};
}

TEST(LinuxTerminal, TheUsersChoiceComesFirst) {
    const auto request =
        linuxTerminalRequest("/a b/login.sh", "claude", [](const std::string&) { return true; });
    ASSERT_TRUE(request);
    EXPECT_EQ(request->program, "/usr/bin/x-terminal-emulator");
    EXPECT_EQ(request->arguments.front(), "-e");
}

struct KnownEmulator {
    const char* path;
    std::vector<std::string> execute;
};

class LinuxTerminalEmulator : public ::testing::TestWithParam<KnownEmulator> {};

TEST_P(LinuxTerminalEmulator, GetsTheCommandInItsOwnWay) {
    const auto request = linuxTerminalRequest("/a b/s", "x", onlyInstalled(GetParam().path));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->program, GetParam().path);
    const std::vector<std::string> command = commandOf(*request);
    ASSERT_THAT(command, SizeIs(5));
    EXPECT_EQ(std::vector(request->arguments.begin(), request->arguments.end() - 5),
              GetParam().execute);
    EXPECT_EQ(command[1], "-c");
    EXPECT_EQ(command[3], "/a b/s");
    EXPECT_EQ(command[4], "x");
}

INSTANTIATE_TEST_SUITE_P(Each, LinuxTerminalEmulator,
                         ::testing::Values(KnownEmulator{"/usr/bin/x-terminal-emulator", {"-e"}},
                                           KnownEmulator{"/usr/bin/gnome-terminal", {"--"}},
                                           KnownEmulator{"/usr/bin/kgx", {"--"}},
                                           KnownEmulator{"/usr/bin/konsole", {"-e"}},
                                           KnownEmulator{"/usr/bin/xfce4-terminal", {"-x"}},
                                           KnownEmulator{"/usr/bin/mate-terminal", {"-x"}},
                                           KnownEmulator{"/usr/bin/lxterminal", {"-e"}},
                                           KnownEmulator{"/usr/bin/qterminal", {"-e"}},
                                           KnownEmulator{"/usr/local/bin/kitty", {"--"}},
                                           KnownEmulator{"/usr/bin/alacritty", {"-e"}},
                                           KnownEmulator{"/usr/bin/foot", {"--"}},
                                           KnownEmulator{"/usr/local/bin/wezterm", {"start", "--"}},
                                           KnownEmulator{"/usr/bin/xterm", {"-e"}}));

TEST(LinuxTerminal, WithNoneInstalledThereIsNothingToStart) {
    EXPECT_FALSE(linuxTerminalRequest("/s", "x", [](const std::string&) { return false; }));
}

TEST(LinuxTerminal, WordsAreNoPartOfTheShellsText) {
    const auto all = [](const std::string&) { return true; };
    const std::string plain = commandOf(*linuxTerminalRequest("/s", "x", all))[2];
    const auto request = linuxTerminalRequest("/s; rm", "$(x) 'y'", all);
    EXPECT_EQ(commandOf(*request)[2], plain);
    EXPECT_EQ(commandOf(*request)[3], "/s; rm");
    EXPECT_EQ(commandOf(*request)[4], "$(x) 'y'");
}

} // namespace
} // namespace varnhold::platform
