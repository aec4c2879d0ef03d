#include "views/desktop/outside_input.h"

#include <QPointer>
#include <QSocketNotifier>
#include <cstddef>
#include <cstdint>
#include <xcb/xcb.h>

// The header names a field "explicit", as C may.
#if defined(__clang__)
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_field
#include <xcb/xinput.h>
#undef explicit

#include "views/desktop/x11_connection.h"
#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

constexpr xcb_keysym_t escapeSymbol = 0xff1b;
constexpr xcb_keycode_t usualEscape = 9; // where the keyboard's map can't be had

xcb_keycode_t findEscape(xcb_connection_t* x) {
    const xcb_setup_t* setup = xcb_get_setup(x);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    const auto map = owned(xcb_get_keyboard_mapping_reply(
        x, xcb_get_keyboard_mapping(x, setup->min_keycode, static_cast<std::uint8_t>(count)),
        nullptr));
    if (!map) {
        return usualEscape;
    }
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(map.get());
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        if (symbols[i * map->keysyms_per_keycode] == escapeSymbol) {
            return static_cast<xcb_keycode_t>(setup->min_keycode + i);
        }
    }
    return usualEscape;
}

} // namespace

// A connection of its own: what is selected here can't change what the toolkit has selected.
struct OutsideInput::Link {
    xcb_connection_t* x = xcb_connect(nullptr, nullptr);
    std::unique_ptr<QSocketNotifier> notifier;
    std::uint8_t extension = 0; // its major opcode, which marks its events
    xcb_keycode_t escape = usualEscape;

    Link() = default;
    ~Link() {
        notifier.reset();
        xcb_disconnect(x);
    }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    // False if the server can't tell us.
    bool listen() {
        if (xcb_connection_has_error(x) != 0) {
            return false;
        }
        const auto* data = xcb_get_extension_data(x, &xcb_input_id);
        const auto version = owned(
            xcb_input_xi_query_version_reply(x, xcb_input_xi_query_version(x, 2, 2), nullptr));
        if (data == nullptr || data->present == 0 || !version) {
            return false;
        }
        extension = data->major_opcode;
        escape = findEscape(x);
        struct {
            xcb_input_event_mask_t header;
            std::uint32_t mask;
        } events{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS};
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(x)).data->root;
        xcb_input_xi_select_events(x, root, 1, &events.header);
        xcb_flush(x);
        return true;
    }
};

OutsideInput::OutsideInput(QObject* parent) : QObject(parent) {
    if (!hasX11()) {
        return;
    }
    link_ = std::make_unique<Link>();
    if (!link_->listen()) {
        link_.reset();
        return;
    }
    link_->notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(link_->x), QSocketNotifier::Read);
    connect(link_->notifier.get(), &QSocketNotifier::activated, this, &OutsideInput::read);
}

OutsideInput::~OutsideInput() = default;

void OutsideInput::read() {
    bool press = false;
    bool escape = false;
    while (const auto event = owned(xcb_poll_for_event(link_->x))) {
        if ((event->response_type & 0x7f) != XCB_GE_GENERIC) {
            continue;
        }
        const auto* generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        if (generic->extension != link_->extension) {
            continue;
        }
        const auto* raw = reinterpret_cast<const xcb_input_raw_key_press_event_t*>(generic);
        press = press || generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS;
        escape = escape ||
                 (generic->event_type == XCB_INPUT_RAW_KEY_PRESS && raw->detail == link_->escape);
    }
    if (xcb_connection_has_error(link_->x) != 0) {
        link_->notifier->setEnabled(false);
    }
    const QPointer<OutsideInput> alive(this); // whoever hears of it may end it
    if (press) {
        emit pressed();
    }
    if (escape && alive) {
        emit escaped();
    }
}

} // namespace varnhold
