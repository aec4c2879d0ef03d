#pragma once

#include <functional>
#include <memory>
#include <string>

#include "lifecycle/fleet_context.h"
#include "platform/background.h"

namespace varnhold {

// Whether the agent of one row is alive, asked for when the row appears and every 15 seconds after.
//
// The service manager is asked away from the main thread; the answer comes back to it. The timer
// ends with the row, and an answer that comes after that is dropped. Main thread.
class OnlineCheck final {
public:
    // `onAnswer` is called after each answer. What the context refers to must outlive the check and
    // the questions it has asked.
    OnlineCheck(const FleetContext& context, std::string label, std::function<void()> onAnswer);
    OnlineCheck(const OnlineCheck&) = delete;
    OnlineCheck& operator=(const OnlineCheck&) = delete;
    ~OnlineCheck() = default;

    void rowAppeared();
    void rowDisappeared();

    // As of the last answer; false before the first.
    [[nodiscard]] bool isOnline() const { return isOnline_; }

    // While an answer is still awaited, no second question is put: one follows after the answer,
    // so that questions don't pile up where the service manager is slow, and answers come in order.
    void checkOnline();
    // Ends any earlier timer.
    void startOnlineTimer();

private:
    void take(bool online);

    FleetContext context_;
    std::string label_;
    std::function<void()> onAnswer_;
    bool isOnline_ = false;
    std::unique_ptr<platform::Timer> onlineTimer_;
    bool isAsking_ = false;
    bool isToAskAgain_ = false;
    platform::Alive alive_;
};

} // namespace varnhold
