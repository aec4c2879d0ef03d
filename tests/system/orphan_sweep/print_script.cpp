#include <cstdio>
#include <cstring>

#include "lifecycle/fleet.h"

// Prints the orphan sweep for the sandboxed test to run; with "systemd", the one for a session with
// a user manager. Never run what this prints anywhere else: it kills processes by pattern.
int main(int argc, char** argv) {
    using varnhold::OrphansGoTo;
    const bool userManager = argc > 1 && std::strcmp(argv[1], "systemd") == 0;
    const std::string script = varnhold::orphanSweepScript(userManager ? OrphansGoTo::userManager
                                                                       : OrphansGoTo::firstProcess);
    return std::fputs(script.c_str(), stdout) < 0 ? 1 : 0;
}
