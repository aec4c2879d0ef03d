#include "launchctl/sd_bus.h"

#include <dlfcn.h>
#include <optional>

namespace varnhold::services {

namespace {

template <class Function>
bool find(void* library, const char* name, Function& function) {
    // The one way from an object to a function that the system's own interface leaves.
    function = reinterpret_cast<Function>(::dlsym(library, name));
    return function != nullptr;
}

std::optional<SdBus> load() {
    void* library = ::dlopen("libsystemd.so.0", RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return std::nullopt;
    }
    SdBus bus;
    bool whole = find(library, "sd_bus_new", bus.make);
#define VARNHOLD_SD_BUS_LOOK_UP(name) whole = find(library, "sd_bus_" #name, bus.name) && whole;
    VARNHOLD_SD_BUS_FUNCTIONS(VARNHOLD_SD_BUS_LOOK_UP)
#undef VARNHOLD_SD_BUS_LOOK_UP
    return whole ? std::optional(bus) : std::nullopt;
}

const std::optional<SdBus>& loaded() {
    static const std::optional<SdBus> bus = load();
    return bus;
}

} // namespace

bool hasSdBus() {
    return loaded().has_value();
}

const SdBus& sdBus() {
    return *loaded();
}

} // namespace varnhold::services
