#include <cstdio>
#include <cstring>
#include <string>

#include "platform/orphan_sweep.h"

// Prints the orphan sweep of Linux for the sandboxed test to run; with "mac", the one of a Mac.
// Never run what this prints anywhere else: it kills processes by pattern.
int main(int argc, char** argv) {
    using namespace varnhold::platform;
    const bool mac = argc > 1 && std::strcmp(argv[1], "mac") == 0;
    const std::string script = mac ? macOrphanSweep() : linuxOrphanSweep();
    return std::fputs(script.c_str(), stdout) < 0 ? 1 : 0;
}
