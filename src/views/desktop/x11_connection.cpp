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
