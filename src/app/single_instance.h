#pragma once

#include <QLocalServer>
#include <functional>
#include <string>

namespace varnhold {

// Sees to it that one supervisor runs for each user.
//
// The first to lock a file in the user's runtime folder is the one; it listens on a socket beside
// it. A later one knocks there, which makes the first show its window, and ends before it has
// touched anything. A crash frees the lock, and the socket that it leaves behind is cleared away by
// the next.
class SingleInstance final {
public:
    // `folder`: private to the user; made if it is missing.
    explicit SingleInstance(std::string folder);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True for the one. False for a later one, which has then knocked. Where no lock can be had for
    // other reasons the program runs on: a supervisor that can't start is worse than two.
    [[nodiscard]] bool claim();

    // Calls back on the main thread whenever a later start has knocked. Needs the event loop.
    void listen(std::function<void()> onKnock);

private:
    void knock() const;
    [[nodiscard]] QString socketPath() const;

    std::string folder_;
    int lock_ = -1;
    QLocalServer server_;
};

} // namespace varnhold
