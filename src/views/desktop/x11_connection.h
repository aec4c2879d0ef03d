#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>
#include <xcb/xcb.h>

// The toolkit's connection to the X server, and what every use of it needs. Main thread.
namespace varnhold {

// None where the toolkit doesn't run on X.
[[nodiscard]] xcb_connection_t* x11Connection();

// XCB_ATOM_NONE after a failure.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* x, const char* name);

// Numbers, windows or atoms that a property holds; none where there is no such property.
[[nodiscard]] std::vector<std::uint32_t> x11Values(xcb_connection_t* x, xcb_window_t window,
                                                   const char* property, xcb_atom_t kind,
                                                   std::uint32_t most = 64);

// A message about a window, still without its data, which come in units of so many bits.
[[nodiscard]] xcb_client_message_event_t x11Message(xcb_connection_t* x, xcb_window_t window,
                                                    const char* type, std::uint8_t unit = 32);

// What the library hands over for us to free: answers and events.
template <class T>
[[nodiscard]] std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
    return {reply, &std::free};
}

} // namespace varnhold
