// What the supervisor does with its whole fleet, without the supervisor: starts all agents of the
// bots file in its home, restarts them without the pauses between the steps, or ends them as Quit
// does.
//
//     bench_fleet start|restart|quit
//
// It kills by pattern, as Quit has to, and so runs nowhere but in the sandbox of the system tests.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "lifecycle/fleet.h"
#include "quiet_platform.h"

int main(int argc, char** argv) {
    using namespace varnhold;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR"); // NOLINT(concurrency-mt-unsafe)
    if (runtime == nullptr || std::strcmp(runtime, "/tmp/runtime") != 0) {
        std::fputs("bench_fleet: only runs inside tests/system/in-sandbox\n", stderr);
        return EXIT_FAILURE;
    }
    bench::QuietPlatform platform;
    const Constants constants(platform.system->homeDirectory());
    const FleetContext context{platform.interfaces, constants};
    const std::string_view word = argc == 2 ? argv[1] : "";
    if (word == "start") {
        startAll(context);
    } else if (word == "restart") {
        restartAll(context, activeBots(constants), [] {});
    } else if (word == "quit") {
        shutDownAll(context);
    } else {
        std::fputs("Usage: bench_fleet start|restart|quit\n", stderr);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
