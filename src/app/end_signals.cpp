#include "app/end_signals.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include "base/system_calls.h"

namespace varnhold {

namespace {

// A handler may do next to nothing, but it may write a byte.
std::array<int, 2> pipeEnds{-1, -1};

std::function<void()>& lastWork() {
    static std::function<void()> work;
    return work;
}

void noteSignal(int) {
    const int before = errno; // what is interrupted may be about to read it
    const char byte = 1;
    static_cast<void>(!::write(pipeEnds[1], &byte, 1));
    errno = before;
}

// So does nohup start a program that is to outlive its terminal, and a shell one that Ctrl+C is not
// meant for.
bool isIgnored(int signal) {
    struct sigaction current {};
    return ::sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

} // namespace

void endOnSignals(std::function<void()> onSignal) {
    if (files::makePipe(pipeEnds.data()) != 0) {
        return; // the signals then end the program at once, as by default
    }
    for (const int end : pipeEnds) {
        ::fcntl(end, F_SETFL, O_NONBLOCK);
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
        if (signal == SIGTERM || !isIgnored(signal)) {
            ::sigaction(signal, &action, nullptr);
        }
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
