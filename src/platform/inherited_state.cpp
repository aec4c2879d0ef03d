#include "platform/inherited_state.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace varnhold::platform {

namespace {

// The next file to be opened would otherwise be taken for the stream, and be written to.
void openStandardStreams() {
    int number = 0;
    do {
        number = ::open("/dev/null", O_RDWR); // NOLINT(cppcoreguidelines-pro-type-vararg)
    } while (number >= 0 && number <= STDERR_FILENO);
    if (number >= 0) {
        ::close(number);
    }
}

} // namespace

void shedInheritedState() {
    openStandardStreams();
    sigset_t none;
    ::sigemptyset(&none);
    ::pthread_sigmask(SIG_SETMASK, &none, nullptr);
    // Without it the ends of children can't be waited for.
    static_cast<void>(std::signal(SIGCHLD, SIG_DFL));
    ::unsetenv("COLUMNS"); // NOLINT(concurrency-mt-unsafe): there is one thread yet
}

} // namespace varnhold::platform
