#pragma once

#include <functional>

namespace varnhold {

// A small process beside ours that does the last work where the display's end took ours away before
// it could: under Wayland the toolkit leaves at once when the compositor goes, and nobody is asked.
//
// It holds our connection to the display, so it knows whether that has ended or whether we have
// crashed or were killed under a display that lives: then it ends too and touches nothing. It holds
// the one supervisor's lock as well, so that a later start waits until the work is done. No signal
// that asks programs to go ends it: it goes with us. Main thread.
class Guardian final {
public:
    // Forks. Call while there is no other thread. `work` is done in the other process, which has
    // of ours what there was at this moment, and then ends. `arguments` are main's: the other
    // process names itself in them. Where no process can be had there is just no guardian.
    Guardian(int argc, char** argv, const std::function<void()>& work);
    ~Guardian();
    Guardian(const Guardian&) = delete;
    Guardian& operator=(const Guardian&) = delete;

    // From now on it stands by. `display`: descriptor of our connection; without one, -1, nothing
    // is guarded. `lock`: descriptor, or -1.
    void guard(int display, int lock);

    // The work has been done by us.
    void dismiss();

private:
    int link_ = -1;
};

} // namespace varnhold
