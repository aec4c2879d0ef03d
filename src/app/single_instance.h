#pragma once

#include <QLocalServer>
#include <string>

#include "app/bus_activation.h"

namespace varnhold {

// Sees to it that one supervisor runs for each user.
//
// The first to lock a file in the user's runtime folder and to get the program's name on the
// session bus is the one. A later one has knocked on a socket beside the lock before it came here
// (knock.h), and calls over the bus where that wasn't heard, which makes the first show its window;
// then it ends before it has touched anything.
// If the first is on its way out and answers no more, the later one waits for its end and takes its
// place. A crash frees lock and name, and the socket that it leaves behind is cleared away by the
// next.
// Main thread.
class SingleInstance final {
public:
    // `folder`: made if it is missing. One that isn't private to the user is not made use of.
    // `activation`: goes to the one, if it isn't this.
    SingleInstance(std::string folder, Activation activation);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True for the one. False for a later one, which has then been heard. Blocks while another is
    // on its way out. Where no lock can be had for other reasons the program runs on: a supervisor
    // that can't start is worse than two.
    [[nodiscard]] bool claim();

    // Descriptor of the lock of the one; -1 if it could have none.
    [[nodiscard]] int lock() const { return hasLock_ ? lock_ : -1; }

    // Calls back from the event loop whenever a later start has called or knocked, with its right
    // to come to the front, if it could hand it over, and whenever the desktop asks for an action.
    void listen(BusActivation::Activated onKnock, BusActivation::Acted onAction);

    // Before the work of the end, which may take long: a later start is then not told that it has
    // been heard, but waits. Keeps the lock, so that no two are at work on the fleet.
    void stopListening();

private:
    enum class Lock { ours, taken, impossible };
    [[nodiscard]] Lock tryLock();

    std::string folder_;
    Activation activation_;
    int lock_ = -1; // open, but perhaps somebody else's
    bool hasLock_ = false;
    QLocalServer server_;
    BusActivation bus_;
};

} // namespace varnhold
