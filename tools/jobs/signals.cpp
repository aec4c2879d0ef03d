#include "jobs/signals.h"

#include <csignal>

namespace varnhold::services {

void resetSignals() {
    for (int number = 1; number < NSIG; ++number) {
        std::signal(number, SIG_DFL);
    }
    sigset_t nothing{};
    ::sigemptyset(&nothing);
    ::pthread_sigmask(SIG_SETMASK, &nothing, nullptr);
}

} // namespace varnhold::services
