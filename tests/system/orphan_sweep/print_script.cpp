#include <cstdio>

#include "lifecycle/fleet.h"

// Prints the orphan sweep for the sandboxed test to run. Never run what this prints anywhere else:
// it kills processes by pattern.
int main() {
    return std::fputs(varnhold::orphanSweepScript().c_str(), stdout) < 0 ? 1 : 0;
}
