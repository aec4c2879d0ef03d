#include "views/desktop/x11_hints.h"

#include <QWindow>
#include <algorithm>
#include <cstdint>
#include <vector>
#include <xcb/xcb.h>

#include "views/desktop/x11_connection.h"

namespace varnhold {

namespace {

constexpr std::uint32_t everyDesktop = 0xFFFFFFFF;

bool isOwned(xcb_connection_t* x, const char* selection) {
    const auto cookie = xcb_get_selection_owner(x, x11Atom(x, selection));
    const auto reply = owned(xcb_get_selection_owner_reply(x, cookie, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void setAtoms(xcb_connection_t* x, xcb_window_t window, const char* property,
              const std::vector<const char*>& names) {
    std::vector<xcb_atom_t> atoms;
    atoms.reserve(names.size());
    for (const char* name : names) {
        atoms.push_back(x11Atom(x, name));
    }
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, window, x11Atom(x, property), XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

} // namespace

void setStripHints(QWindow& window) {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return;
    }
    window.create();
    const auto id = static_cast<xcb_window_t>(window.winId());
    // A dock couldn't be moved by the user.
    setAtoms(x, id, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_UTILITY"});
    setAtoms(x, id, "_NET_WM_STATE",
             {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER",
              "_NET_WM_STATE_STICKY"});
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, id, x11Atom(x, "_NET_WM_DESKTOP"),
                        XCB_ATOM_CARDINAL, 32, 1, &everyDesktop);
    xcb_flush(x);
}

bool hasX11() {
    return x11Connection() != nullptr;
}

bool hasWindowManager() {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return true;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    return !x11Values(x, root, "_NET_SUPPORTING_WM_CHECK", XCB_ATOM_WINDOW).empty();
}

bool hasX11FullScreenWindow() {
    xcb_connection_t* x = x11Connection();
    if (x == nullptr) {
        return false;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
    const auto active = x11Values(x, root, "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
    if (active.empty() || active.front() == XCB_WINDOW_NONE) {
        return false;
    }
    const auto states = x11Values(x, active.front(), "_NET_WM_STATE", XCB_ATOM_ATOM);
    return std::find(states.begin(), states.end(), x11Atom(x, "_NET_WM_STATE_FULLSCREEN")) !=
           states.end();
}

bool windowsAreBlended() {
    xcb_connection_t* x = x11Connection();
    return x == nullptr || isOwned(x, "_NET_WM_CM_S0");
}

} // namespace varnhold
