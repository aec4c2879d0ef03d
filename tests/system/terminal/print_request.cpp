#include <cstdio>
#include <string>

#include "platform/terminal.h"

// Prints what would be started so that a script runs in a terminal emulator, one word a line with a
// null byte behind each: print_terminal_request SCRIPT ARGUMENT
int main(int argc, char** argv) {
    if (argc != 3) {
        return 64;
    }
    const auto request = varnhold::platform::linuxTerminalRequest(
        argv[1], argv[2], [](const std::string& path) { return path == "/usr/bin/xterm"; });
    if (!request) {
        return 1;
    }
    std::printf("%s%c", request->program.c_str(), 0);
    for (const std::string& argument : request->arguments) {
        std::printf("%s%c", argument.c_str(), 0);
    }
    return 0;
}
