#include "settings/online_checks.h"

#include <utility>

#include "lifecycle/service_control.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

constexpr auto checkInterval = 15s;

} // namespace

OnlineCheck::OnlineCheck(const FleetContext& context, std::string label,
                         std::function<void()> onAnswer)
    : context_(context), label_(std::move(label)), onAnswer_(std::move(onAnswer)) {}

void OnlineCheck::rowAppeared() {
    checkOnline();
    startOnlineTimer();
}

void OnlineCheck::rowDisappeared() {
    onlineTimer_.reset();
}

void OnlineCheck::checkOnline() {
    // On the other thread only copies are touched: the row may go meanwhile.
    context_.platform.queues.postBackground(
        platform::Priority::utility,
        [this, context = context_, label = label_, alive = std::weak_ptr(alive_)] {
            const bool online = isDaemonOnline(context, label);
            context.platform.queues.postMain([this, online, alive] {
                if (!alive.expired()) {
                    isOnline_ = online;
                    onAnswer_();
                }
            });
        });
}

void OnlineCheck::startOnlineTimer() {
    onlineTimer_.reset();
    onlineTimer_ = context_.platform.timers.repeat(checkInterval, [this] { checkOnline(); });
}

} // namespace varnhold
