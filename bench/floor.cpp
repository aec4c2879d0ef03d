// What no supervisor can undercut: processes started one after the other and nothing else.
//
//     bench_floor COUNT PROGRAM
//
// Starts them, waits for a line, and ends them. The times are the agents' own to tell.

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

extern char** environ; // NOLINT(readability-redundant-declaration): POSIX leaves it to the program

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("Usage: bench_floor COUNT PROGRAM\n", stderr);
        return EXIT_FAILURE;
    }
    const long count = std::strtol(argv[1], nullptr, 10);
    char* words[] = {argv[2], nullptr};
    std::vector<pid_t> agents;
    for (long i = 0; i < count; ++i) {
        pid_t agent = 0;
        if (::posix_spawn(&agent, argv[2], nullptr, nullptr, words, environ) != 0) {
            std::fputs("bench_floor: an agent can't be started\n", stderr);
            return EXIT_FAILURE;
        }
        agents.push_back(agent);
    }
    static_cast<void>(std::getchar());
    for (const pid_t agent : agents) {
        ::kill(agent, SIGTERM);
    }
    for (const pid_t agent : agents) {
        ::waitpid(agent, nullptr, 0);
    }
    return EXIT_SUCCESS;
}
