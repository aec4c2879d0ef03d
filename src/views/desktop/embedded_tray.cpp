#include "views/desktop/embedded_tray.h"

#include <QCoreApplication>
#include <QWindow>
#include <cstdint>
#include <cstring>
#include <optional>
#include <xcb/xcb.h>

#include "views/desktop/session_kind.h"
#include "views/desktop/x11_connection.h"

namespace varnhold {

namespace {

constexpr std::uint32_t requestDock = 0; // SYSTEM_TRAY_REQUEST_DOCK
constexpr std::uint8_t depthWithAlpha = 32;

// The kind of window that the tray wishes for, if it says so.
std::optional<xcb_visualid_t> wishedVisual(xcb_connection_t* x, xcb_window_t tray) {
    const auto cookie = xcb_get_property(x, 0, tray, x11Atom(x, "_NET_SYSTEM_TRAY_VISUAL"),
                                         XCB_ATOM_VISUALID, 0, 1);
    const auto reply = owned(xcb_get_property_reply(x, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(xcb_visualid_t)) {
        return std::nullopt;
    }
    xcb_visualid_t visual = 0;
    std::memcpy(&visual, xcb_get_property_value(reply.get()), sizeof visual);
    return visual;
}

bool hasAlpha(xcb_connection_t* x, xcb_visualid_t visual) {
    for (auto depth =
             xcb_screen_allowed_depths_iterator(xcb_setup_roots_iterator(xcb_get_setup(x)).data);
         depth.rem != 0; xcb_depth_next(&depth)) {
        for (auto each = xcb_depth_visuals_iterator(depth.data); each.rem != 0;
             xcb_visualtype_next(&each)) {
            if (each.data->visual_id == visual) {
                return depth.data->depth == depthWithAlpha;
            }
        }
    }
    return false;
}

} // namespace

quint32 embeddedTray() {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return XCB_WINDOW_NONE;
    }
    const auto reply = owned(xcb_get_selection_owner_reply(
        x, xcb_get_selection_owner(x, x11Atom(x, "_NET_SYSTEM_TRAY_S0")), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

EmbeddedTrayArrivals::EmbeddedTrayArrivals(QObject* parent) : QObject(parent) {
    if (xcb_connection_t* x = x11Connection(); x != nullptr) {
        managerAtom_ = x11Atom(x, "MANAGER");
        trayAtom_ = x11Atom(x, "_NET_SYSTEM_TRAY_S0");
        QCoreApplication::instance()->installNativeEventFilter(this);
    }
}

EmbeddedTrayArrivals::~EmbeddedTrayArrivals() {
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

// Panels of this kind tell the root window, whose news the toolkit hears anyway.
bool EmbeddedTrayArrivals::nativeEventFilter(const QByteArray&, void* message, qintptr*) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & ~0x80) == XCB_CLIENT_MESSAGE) {
        const auto* news = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (news->type == managerAtom_ && news->data.data32[1] == trayAtom_) {
            emit arrived();
        }
    }
    return false;
}

// The name of the toolkit's own widget of this kind, and it looks for nothing else.
QString embeddedWindowName() {
    return QStringLiteral("QSystemTrayIconSys");
}

bool trayIsBlended() {
    const xcb_window_t tray = embeddedTray();
    if (tray == XCB_WINDOW_NONE || !trayShowsWindowsWithAlpha()) {
        return false;
    }
    const auto visual = wishedVisual(x11Connection(), tray);
    return visual && hasAlpha(x11Connection(), *visual);
}

void dockIntoTray(QWindow& window) {
    const xcb_window_t tray = embeddedTray();
    if (tray == XCB_WINDOW_NONE) {
        return;
    }
    xcb_connection_t* x = x11Connection();
    xcb_client_message_event_t request = x11Message(x, tray, "_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = static_cast<std::uint32_t>(window.winId());
    xcb_send_event(x, 0, tray, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&request));
    xcb_flush(x);
}

void showTrayBehind(QWindow& window) {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return;
    }
    const auto id = static_cast<xcb_window_t>(window.winId());
    constexpr std::uint32_t parents = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(x, id, XCB_CW_BACK_PIXMAP, &parents);
    xcb_clear_area(x, 0, id, 0, 0, 0, 0);
    xcb_flush(x);
}

} // namespace varnhold
