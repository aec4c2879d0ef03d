#include "views/desktop/x11_connection.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>
#include <cstdint>
#include <cstring>

namespace varnhold {

xcb_connection_t* x11Connection() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 != nullptr ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(xcb_connection_t* x, const char* name) {
    const auto cookie = xcb_intern_atom(x, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const auto reply = owned(xcb_intern_atom_reply(x, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint32_t> x11Values(xcb_connection_t* x, xcb_window_t window, const char* property,
                                     xcb_atom_t kind, std::uint32_t most) {
    const auto cookie = xcb_get_property(x, 0, window, x11Atom(x, property), kind, 0, most);
    const auto reply = owned(xcb_get_property_reply(x, cookie, nullptr));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* values = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {values, values + reply->value_len};
}

xcb_client_message_event_t x11Message(xcb_connection_t* x, xcb_window_t window, const char* type,
                                      std::uint8_t unit) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = unit;
    message.window = window;
    message.type = x11Atom(x, type);
    return message;
}

} // namespace varnhold
