// The agent of the benchmarks of whole fleets: it says that it is there, waits to be ended, and
// says so. It takes whatever words it is given, so that it can stand in for an interpreter with its
// module; given a script, it has nothing to do.

#include <csignal>
#include <cstdlib>
#include <string_view>

#include "alive.h"

namespace {

varnhold::bench::Alive* alive = nullptr;

void end(int) {
    if (alive != nullptr) {
        alive->lastEnd = varnhold::bench::nanoseconds();
        --alive->count;
    }
    ::_exit(EXIT_SUCCESS);
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == "-c") {
        return EXIT_SUCCESS;
    }
    alive = varnhold::bench::mapAlive();
    std::signal(SIGTERM, end);
    std::signal(SIGINT, end);
    sigset_t none{};
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    if (alive != nullptr) {
        alive->lastStart = varnhold::bench::nanoseconds();
        ++alive->count;
    }
    while (true) {
        ::pause();
    }
}
