#include "app/command_line.h"

#include <cstdlib>
#include <iostream>

#include "shell/version.h"

namespace varnhold {

namespace {

using Request = CommandLine::Request;

constexpr const char* usage =
    "Usage: varnhold\n"
    "       varnhold --help | --version\n"
    "\n"
    "Shows the fleet of bots in the tray or in a strip, and starts it. Where it runs already, its\n"
    "settings window is shown instead. Quit in its menu takes the fleet down.\n";

} // namespace

CommandLine readCommandLine(const std::vector<std::string>& words) {
    const bool fromSessionManager = words.size() == 2 && words[0] == "-session";
    if (words.empty() || fromSessionManager) {
        return {};
    }
    if (words.size() == 1 && words[0] == "--help") {
        return {Request::tell, usage};
    }
    if (words.size() == 1 && words[0] == "--version") {
        return {Request::tell, std::string("varnhold ") + version + "\n"};
    }
    const bool known = words[0] == "--help" || words[0] == "--version";
    return {Request::refuse,
            "varnhold: it doesn't know the word \"" + words[known ? 1 : 0] + "\".\n" + usage};
}

std::optional<int> answerWords(int argc, char** argv) {
    const CommandLine line = readCommandLine({argv + (argc > 0 ? 1 : 0), argv + argc});
    switch (line.request) {
    case Request::run:
        return std::nullopt;
    case Request::tell:
        std::cout << line.text << std::flush;
        return std::cout ? EXIT_SUCCESS : EXIT_FAILURE;
    case Request::refuse:
        std::cerr << line.text;
        return exitUsage;
    }
    return std::nullopt;
}

} // namespace varnhold
