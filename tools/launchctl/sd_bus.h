#pragma once

#include <systemd/sd-bus.h>

namespace varnhold::services {

// The bus library's functions, under their names without the prefix. They are looked up when a user
// manager is first to be asked, since loading the library with all that it stands on takes longer
// than most verbs do under s6.
struct SdBus {
#define VARNHOLD_SD_BUS_FUNCTIONS(X)                                                               \
    X(call)                                                                                        \
    X(call_method)                                                                                 \
    X(call_method_async)                                                                           \
    X(close_unref)                                                                                 \
    X(error_free)                                                                                  \
    X(error_has_name)                                                                              \
    X(match_signal_async)                                                                          \
    X(message_append)                                                                              \
    X(message_close_container)                                                                     \
    X(message_enter_container)                                                                     \
    X(message_get_error)                                                                           \
    X(message_is_method_error)                                                                     \
    X(message_new_method_call)                                                                     \
    X(message_open_container)                                                                      \
    X(message_peek_type)                                                                           \
    X(message_read)                                                                                \
    X(message_read_basic)                                                                          \
    X(message_set_auto_start)                                                                      \
    X(message_unref)                                                                               \
    X(process)                                                                                     \
    X(set_address)                                                                                 \
    X(set_bus_client)                                                                              \
    X(set_method_call_timeout)                                                                     \
    X(set_trusted)                                                                                 \
    X(start)                                                                                       \
    X(wait)
// NOLINTNEXTLINE(bugprone-macro-parentheses): a member can't be declared in them
#define VARNHOLD_SD_BUS_MEMBER(name) decltype(&::sd_bus_##name) name = nullptr;
    VARNHOLD_SD_BUS_FUNCTIONS(VARNHOLD_SD_BUS_MEMBER)
#undef VARNHOLD_SD_BUS_MEMBER
    decltype(&::sd_bus_new) make = nullptr;
};

// Whether the library is there; loads it.
[[nodiscard]] bool hasSdBus();
// Only after hasSdBus() has said so.
[[nodiscard]] const SdBus& sdBus();

} // namespace varnhold::services
