#include "platform/terminal.h"

#include <array>
#include <utility>
#include <vector>

namespace varnhold::platform {

namespace {

struct Emulator {
    const char* name;
    std::vector<std::string> execute; // after which the command follows, one word an argument
};

// The first is the link that Debian's alternatives keep to the user's choice.
const std::array<Emulator, 13>& emulators() {
    static const std::array<Emulator, 13> all{{
        {"x-terminal-emulator", {"-e"}},
        {"gnome-terminal", {"--"}},
        {"kgx", {"--"}},
        {"konsole", {"-e"}},
        {"xfce4-terminal", {"-x"}},
        {"mate-terminal", {"-x"}},
        {"lxterminal", {"-e"}},
        {"qterminal", {"-e"}},
        {"kitty", {"--"}},
        {"alacritty", {"-e"}},
        {"foot", {"--"}},
        {"wezterm", {"start", "--"}},
        {"xterm", {"-e"}},
    }};
    return all;
}

// Where the system's and the machine's own programs are.
constexpr std::array folders{"/usr/bin/", "/usr/local/bin/"};

// Runs its first word with the second one. An interrupt is for the script alone: it is caught here,
// not ignored, or else the script would ignore it too.
constexpr const char* untilAKeyIsPressed =
    R"(trap : INT QUIT
"$0" "$1"
status=$?
[ "$status" -eq 0 ] || printf '\nThe sign-in has failed (%s).\n' "$status"
printf '\nPress any key to close this window. '
stty -icanon -echo min 1 time 0
dd bs=1 count=1 >/dev/null 2>&1
)";

} // namespace

ProcessRequest macTerminalRequest(const std::string& script, const std::string& argument) {
    return {.program = "/usr/bin/osascript",
            .arguments = {"-e",
                          "tell application \"Terminal\" to do script \"'" + script + "' " +
                              argument + "\"",
                          "-e", "tell application \"Terminal\" to activate"}};
}

std::optional<ProcessRequest>
linuxTerminalRequest(const std::string& script, const std::string& argument,
                     const std::function<bool(const std::string&)>& exists) {
    for (const Emulator& emulator : emulators()) {
        for (const char* folder : folders) {
            const std::string program = std::string(folder) + emulator.name;
            if (exists(program)) {
                std::vector<std::string> arguments = emulator.execute;
                arguments.insert(arguments.end(),
                                 {"/bin/sh", "-c", untilAKeyIsPressed, script, argument});
                return ProcessRequest{.program = program, .arguments = std::move(arguments)};
            }
        }
    }
    return std::nullopt;
}

} // namespace varnhold::platform
