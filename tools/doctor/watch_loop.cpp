#include "watch_loop.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "doctor/command_line.h"
#include "doctor/watch.h"

namespace varnhold::doctor {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds betweenLooks(2000);

volatile std::sig_atomic_t endRequested = 0;

void requestEnd(int) {
    endRequested = 1;
}

void write(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t done = ::write(STDOUT_FILENO, text.data() + at, text.size() - at);
        if (done < 0 && errno != EINTR) {
            endRequested = 1; // nobody looks any more
            return;
        }
        at += static_cast<std::size_t>(done > 0 ? done : 0);
    }
}

// The terminal to itself: another screen, no cursor, keys as they are typed.
class WholeTerminal {
public:
    WholeTerminal() {
        ::tcgetattr(STDIN_FILENO, &before_);
        termios raw = before_;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        ::tcsetattr(STDIN_FILENO, TCSANOW, &raw);
        write("\x1b[?1049h\x1b[?25l");
    }
    ~WholeTerminal() {
        write("\x1b[?25h\x1b[?1049l");
        ::tcsetattr(STDIN_FILENO, TCSANOW, &before_);
    }
    WholeTerminal(const WholeTerminal&) = delete;
    WholeTerminal& operator=(const WholeTerminal&) = delete;

private:
    termios before_{};
};

// A key, or the end of the time. False if it is over.
bool wait(Clock::time_point end) {
    while (endRequested == 0) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0) {
            return true;
        }
        pollfd keys{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
        const int ready = ::poll(&keys, 1, static_cast<int>(left.count()));
        if (ready < 0) {
            return endRequested == 0; // another size of the window, maybe: shown at once
        }
        char key = 0;
        if (ready > 0 && (::read(STDIN_FILENO, &key, 1) <= 0 || key == 'q' || key == 'Q')) {
            return false;
        }
    }
    return false;
}

void show(const Watch& watch, bool color) {
    winsize size{};
    ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size);
    const TextStyle style{.width = size.ws_col > 0 ? size.ws_col : 80U, .color = color};
    write(frameOf(watch.lines(style, size.ws_row > 0 ? size.ws_row : 24U)));
}

} // namespace

int watchFleet(const std::function<Surroundings()>& around, bool color) {
    if (::isatty(STDIN_FILENO) == 0 || ::isatty(STDOUT_FILENO) == 0) {
        std::cerr << "varnhold-doctor: watch needs a terminal\n";
        return exitWrongUse;
    }
    struct sigaction action {};
    action.sa_handler = requestEnd;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ::sigaction(signal, &action, nullptr);
    }
    action.sa_handler = [](int) {}; // interrupts the wait, so that the table follows the window
    ::sigaction(SIGWINCH, &action, nullptr);
    const WholeTerminal terminal;
    Watch watch;
    auto next = Clock::now();
    do {
        if (Clock::now() >= next) {
            watch.look(around());
            next = Clock::now() + betweenLooks;
        }
        show(watch, color);
    } while (wait(next));
    return 0;
}

} // namespace varnhold::doctor
