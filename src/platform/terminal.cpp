#include "platform/terminal.h"

#include <algorithm>
#include <array>

namespace varnhold::platform {

namespace {

struct Emulator {
    const char* path;
    const char* execute; // the option after which the command follows, one word an argument
};

// The first is the link that Debian's alternatives keep to the user's choice.
constexpr std::array<Emulator, 8> emulators{{
    {"/usr/bin/x-terminal-emulator", "-e"},
    {"/usr/bin/gnome-terminal", "--"},
    {"/usr/bin/kgx", "--"},
    {"/usr/bin/konsole", "-e"},
    {"/usr/bin/xfce4-terminal", "-x"},
    {"/usr/bin/kitty", "--"},
    {"/usr/bin/foot", "--"},
    {"/usr/bin/xterm", "-e"},
}};

} // namespace

ProcessRequest macTerminalRequest(const std::string& script, const std::string& argument) {
    return {.program = "/usr/bin/osascript",
            .arguments = {"-e",
                          "tell application \"Terminal\" to do script \"'" + script + "' " +
                              argument + "\"",
                          "-e", "tell application \"Terminal\" to activate"}};
}

ProcessRequest linuxTerminalRequest(const std::string& script, const std::string& argument,
                                    const std::function<bool(const std::string&)>& exists) {
    const auto* const found = std::find_if(emulators.begin(), emulators.end(),
                                           [&](const Emulator& each) { return exists(each.path); });
    // With none installed the start fails, and is dropped like any other failure to start.
    const Emulator& emulator = found == emulators.end() ? emulators.front() : *found;
    return {.program = emulator.path, .arguments = {emulator.execute, script, argument}};
}

} // namespace varnhold::platform
