#include "session_tray.h"

#include <chrono>
#include <memory>
#include <systemd/sd-bus.h>

#include "answer_limit.h"

namespace varnhold::doctor {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";

struct Closer {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

std::optional<bool> hasOwner(sd_bus* bus, const char* name) {
    sd_bus_message* reply = nullptr;
    int has = 0;
    const int asked =
        sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "NameHasOwner", nullptr, &reply, "s", name);
    const bool answered = asked >= 0 && sd_bus_message_read(reply, "b", &has) >= 0;
    sd_bus_message_unref(reply);
    return answered ? std::optional(has != 0) : std::nullopt;
}

// Whoever keeps the list of icons may be there with nobody to show them.
bool isShown(sd_bus* bus) {
    int shown = 0;
    return sd_bus_get_property_trivial(bus, watcher, "/StatusNotifierWatcher", watcher,
                                       "IsStatusNotifierHostRegistered", nullptr, 'b',
                                       &shown) >= 0 &&
           shown != 0;
}

} // namespace

std::optional<bool> sessionHasTray() {
    sd_bus* raw = nullptr;
    const int opened = sd_bus_open_user(&raw);
    const std::unique_ptr<sd_bus, Closer> bus(raw);
    if (opened < 0) {
        return std::nullopt;
    }
    sd_bus_set_method_call_timeout(raw, std::chrono::microseconds(answerLimit).count());
    const auto listed = hasOwner(raw, watcher);
    return listed ? std::optional(*listed && isShown(raw)) : std::nullopt;
}

} // namespace varnhold::doctor
