// Tells when windows of a program come to be seen: for each a line with the moment, in nanoseconds
// of the monotonic clock, as the display's server says it. budgets.py reads them.
//
//     bench_shown CLASS

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <xcb/xcb.h>

#include "alive.h"

namespace {

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

void watch(xcb_connection_t* display, xcb_window_t window, std::uint32_t events) {
    xcb_change_window_attributes(display, window, XCB_CW_EVENT_MASK, &events);
    xcb_flush(display);
}

// Both of its words, with a zero byte behind each.
std::string classOf(xcb_connection_t* display, xcb_window_t window) {
    const auto asked =
        xcb_get_property(display, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, 64);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(display, asked, nullptr),
                                                &std::free);
    return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                 : std::string();
}

} // namespace

int main(int argc, char** argv) {
    xcb_connection_t* display = xcb_connect(nullptr, nullptr);
    if (argc != 2 || xcb_connection_has_error(display) != 0) {
        std::fputs("Usage: DISPLAY=:N bench_shown CLASS\n", stderr);
        return EXIT_FAILURE;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(display)).data->root;
    watch(display, root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    std::puts("ready");
    std::fflush(stdout);
    using Event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>;
    while (Event event{xcb_wait_for_event(display), &std::free}) {
        const int kind = event->response_type & 0x7f;
        if (kind == XCB_CREATE_NOTIFY) {
            // Window managers put it into a frame, so it is watched by itself.
            watch(display, reinterpret_cast<xcb_create_notify_event_t*>(event.get())->window,
                  XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        } else if (kind == XCB_MAP_NOTIFY) {
            const std::uint64_t moment = varnhold::bench::nanoseconds();
            const auto* mapped = reinterpret_cast<xcb_map_notify_event_t*>(event.get());
            if (mapped->event == mapped->window &&
                classOf(display, mapped->window).find(argv[1]) != std::string::npos) {
                std::printf("%ju\n", static_cast<std::uintmax_t>(moment));
                std::fflush(stdout);
            }
        }
    }
    return EXIT_SUCCESS;
}
