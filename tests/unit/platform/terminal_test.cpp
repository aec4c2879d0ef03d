#include "platform/terminal.h"

#include <gtest/gtest.h>

#include <string>

namespace varnhold::platform {
namespace {

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

TEST(LinuxTerminal, TheUsersChoiceComesFirst) {
    EXPECT_EQ(
        linuxTerminalRequest("/a b/login.sh", "claude", [](const std::string&) { return true; }),
        (ProcessRequest{.program = "/usr/bin/x-terminal-emulator",
                        .arguments = {"-e", "/a b/login.sh", "claude"}}));
}

TEST(LinuxTerminal, EachEmulatorGetsTheCommandInItsOwnWay) {
    EXPECT_EQ(
        linuxTerminalRequest("/s", "x", onlyInstalled("/usr/bin/gnome-terminal")),
        (ProcessRequest{.program = "/usr/bin/gnome-terminal", .arguments = {"--", "/s", "x"}}));
    EXPECT_EQ(
        linuxTerminalRequest("/s", "x", onlyInstalled("/usr/bin/xfce4-terminal")),
        (ProcessRequest{.program = "/usr/bin/xfce4-terminal", .arguments = {"-x", "/s", "x"}}));
    EXPECT_EQ(linuxTerminalRequest("/s", "x", onlyInstalled("/usr/bin/xterm")),
              (ProcessRequest{.program = "/usr/bin/xterm", .arguments = {"-e", "/s", "x"}}));
}

TEST(LinuxTerminal, WithNoneInstalledTheFirstIsTriedAllTheSame) {
    EXPECT_EQ(linuxTerminalRequest("/s", "x", [](const std::string&) { return false; }).program,
              "/usr/bin/x-terminal-emulator");
}

TEST(LinuxTerminal, WordsAreNeverJoinedForAShell) {
    const auto request = linuxTerminalRequest("/s; rm", "$(x) 'y'", onlyInstalled(""));
    EXPECT_EQ(request.arguments, (std::vector<std::string>{"-e", "/s; rm", "$(x) 'y'"}));
}

} // namespace
} // namespace varnhold::platform
