#include "app/end_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace varnhold {

namespace {

// A handler may do next to nothing, but it may write a byte.
std::array<int, 2> pipeEnds{-1, -1};

std::function<void()>& lastWork() {
    static std::function<void()> work;
    return work;
}

void noteSignal(int) {
    const char byte = 1;
    static_cast<void>(!::write(pipeEnds[1], &byte, 1));
}

} // namespace

void endOnSignals(std::function<void()> onSignal) {
    if (::pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals then end the program at once, as by default
    }
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp,
                     [notifier, onSignal = std::move(onSignal)] {
                         notifier->setEnabled(false);
                         onSignal();
                     });
    struct sigaction action {};
    action.sa_handler = noteSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaction(signal, &action, nullptr);
    }
}

void beforeSuddenExit(std::function<void()> work) {
    lastWork() = std::move(work); // made first, so that it outlives the handler's turn
    std::atexit([] {
        lastWork()();
        std::_Exit(EXIT_FAILURE);
    });
}

} // namespace varnhold
