// What users start. Where the supervisor runs already, it is told so, and that is all: loading the
// toolkit would take ten times as long. Otherwise this process becomes the supervisor, with its
// words, its surroundings and its process id.

#include <cerrno>
#include <cstdlib>
#include <iostream>
#include <string>
#include <system_error>
#include <unistd.h>

#include "app/activation.h"
#include "app/command_line.h"
#include "app/knock.h"
#include "platform/executable.h"
#include "platform/inherited_state.h"
#include "platform/layout.h"
#include "platform/runtime_directory.h"

namespace {

// The supervisor would say the same, so nothing is said before it is known that none comes.
bool isHeard() {
    const auto runtime =
        varnhold::platform::findRuntimeDirectory(varnhold::platform::runtimeHints());
    if (!runtime || !varnhold::knock(runtime->path, varnhold::givenActivation().asText())) {
        return false;
    }
    if (!runtime->remark.empty()) {
        std::cerr << "varnhold: " << runtime->remark << "\n";
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    varnhold::platform::shedInheritedState();
    if (const auto answered = varnhold::answerWords(argc, argv)) {
        return *answered;
    }
    if (isHeard()) {
        return EXIT_SUCCESS;
    }
    const std::string program =
        varnhold::platform::supervisorBehind(varnhold::platform::executablePath());
    ::execv(program.c_str(), argv);
    std::cerr << "varnhold: " << program << ": " << std::generic_category().message(errno) << ".\n";
    return varnhold::exitUnavailable;
}
