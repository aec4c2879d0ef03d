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
    if (isAsking_) {
        isToAskAgain_ = true;
        return;
    }
    isAsking_ = true;
    platform::background(
        context_.platform.queues, platform::Priority::utility, alive_,
        [context = context_, label = label_] { return isDaemonOnline(context, label); },
        [this](bool online) { take(online); });
}

void OnlineCheck::take(bool online) {
    isAsking_ = false;
    isOnline_ = online;
    if (std::exchange(isToAskAgain_, false)) {
        checkOnline();
    }
    onAnswer_();
}

void OnlineCheck::startOnlineTimer() {
    onlineTimer_ = context_.platform.timers.repeat(checkInterval, [this] { checkOnline(); });
}

} // namespace varnhold
