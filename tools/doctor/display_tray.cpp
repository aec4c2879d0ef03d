#include "display_tray.h"

#include <cstdint>
#include <cstdlib>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <xcb/xcb.h>

#include "answer_limit.h"

namespace varnhold::doctor {

namespace {

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, &std::free};
}

std::optional<bool> askDisplay() {
    int screen = 0;
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> display(
        xcb_connect(nullptr, &screen), &xcb_disconnect);
    if (xcb_connection_has_error(display.get()) != 0) {
        return std::nullopt;
    }
    const std::string name = "_NET_SYSTEM_TRAY_S" + std::to_string(screen);
    const auto atom = owned(xcb_intern_atom_reply(
        display.get(),
        xcb_intern_atom(display.get(), 1, static_cast<std::uint16_t>(name.size()), name.c_str()),
        nullptr));
    if (!atom) {
        return std::nullopt;
    }
    if (atom->atom == XCB_ATOM_NONE) {
        return false; // nobody has ever spoken of a tray there
    }
    const auto owner = owned(xcb_get_selection_owner_reply(
        display.get(), xcb_get_selection_owner(display.get(), atom->atom), nullptr));
    return owner ? std::optional(owner->owner != XCB_WINDOW_NONE) : std::nullopt;
}

} // namespace

// The library waits for a server for ever. So it does that beside us; a server that hangs is left
// to it until the program ends.
std::optional<bool> displayHasTray() {
    auto asked = std::make_shared<std::promise<std::optional<bool>>>();
    auto answer = asked->get_future();
    std::thread([asked] { asked->set_value(askDisplay()); }).detach();
    return answer.wait_for(answerLimit) == std::future_status::ready ? answer.get() : std::nullopt;
}

} // namespace varnhold::doctor
