#include "views/desktop/startup_notice.h"

#include <QWindow>
#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>
#include <system_error>
#include <xcb/xcb.h>

#include "views/desktop/x11_connection.h"

namespace varnhold {

namespace {

constexpr std::uint32_t fromApplication = 1; // EWMH's source of a request
constexpr std::size_t pieceLength = 20;      // bytes of a message

xcb_window_t rootOf(xcb_connection_t* x) {
    return xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
}

void send(xcb_connection_t* x, const xcb_client_message_event_t& message, std::uint32_t listeners) {
    xcb_send_event(x, 0, rootOf(x), listeners, reinterpret_cast<const char*>(&message));
}

std::string quoted(const std::string& text) {
    std::string out = "\"";
    for (const char each : text) {
        if (each == '"' || each == '\\') {
            out += '\\';
        }
        out += each;
    }
    return out + '"';
}

void bringForwardAsOf(xcb_connection_t* x, xcb_window_t window, std::uint32_t time) {
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, x11Atom(x, "_NET_WM_USER_TIME"),
                        XCB_ATOM_CARDINAL, 32, 1, &time);
    xcb_client_message_event_t message = x11Message(x, window, "_NET_ACTIVE_WINDOW");
    message.data.data32[0] = fromApplication;
    message.data.data32[1] = time;
    send(x, message, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
}

} // namespace

std::optional<std::uint32_t> startupTime(const std::string& id) {
    constexpr std::string_view mark = "_TIME";
    const std::size_t at = id.rfind(mark);
    if (at == std::string::npos) {
        return std::nullopt;
    }
    const char* const end = id.data() + id.size();
    std::uint32_t time = 0;
    const auto read = std::from_chars(id.data() + at + mark.size(), end, time);
    return read.ec == std::errc{} && read.ptr == end && time != 0 ? std::optional(time)
                                                                  : std::nullopt;
}

// An id that tells no time, as a compositor beside the X server makes them, is known to the window
// manager alone.
void bringForward(QWindow& window, const std::string& id) {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return;
    }
    const auto number = static_cast<xcb_window_t>(window.winId());
    if (const auto time = startupTime(id)) {
        bringForwardAsOf(x, number, *time);
    } else {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, number, x11Atom(x, "_NET_STARTUP_ID"),
                            x11Atom(x, "UTF8_STRING"), 8, static_cast<std::uint32_t>(id.size()),
                            id.data());
    }
    xcb_flush(x);
}

// The text goes out in pieces, with the zero at its end, in the name of a window of its own.
void endStartup(const std::string& id) {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr || id.empty()) {
        return;
    }
    const xcb_window_t sender = xcb_generate_id(x);
    xcb_create_window(x, XCB_COPY_FROM_PARENT, sender, rootOf(x), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    std::string text = "remove: ID=" + quoted(id);
    text.push_back('\0');
    xcb_client_message_event_t piece = x11Message(x, sender, "_NET_STARTUP_INFO_BEGIN", 8);
    for (std::size_t at = 0; at < text.size(); at += pieceLength) {
        std::memset(piece.data.data8, 0, pieceLength);
        std::memcpy(piece.data.data8, text.data() + at, std::min(pieceLength, text.size() - at));
        send(x, piece, XCB_EVENT_MASK_PROPERTY_CHANGE);
        piece.type = x11Atom(x, "_NET_STARTUP_INFO");
    }
    xcb_destroy_window(x, sender);
    xcb_flush(x);
}

} // namespace varnhold
