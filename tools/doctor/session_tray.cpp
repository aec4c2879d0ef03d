#include "session_tray.h"

#include <memory>
#include <systemd/sd-bus.h>

namespace varnhold::doctor {

std::optional<bool> sessionHasTray() {
    struct Closer {
        void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
    };
    constexpr std::uint64_t patience = 1'000'000; // microseconds
    sd_bus* raw = nullptr;
    const int opened = sd_bus_open_user(&raw);
    const std::unique_ptr<sd_bus, Closer> bus(raw);
    if (opened < 0) {
        return std::nullopt;
    }
    sd_bus_set_method_call_timeout(raw, patience);
    sd_bus_message* reply = nullptr;
    int has = 0;
    const int asked = sd_bus_call_method(raw, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                         "org.freedesktop.DBus", "NameHasOwner", nullptr, &reply,
                                         "s", "org.kde.StatusNotifierWatcher");
    const bool answered = asked >= 0 && sd_bus_message_read(reply, "b", &has) >= 0;
    sd_bus_message_unref(reply);
    return answered ? std::optional(has != 0) : std::nullopt;
}

} // namespace varnhold::doctor
