#include "app/activation.h"

#include <cstdlib>

namespace varnhold {

namespace {

constexpr char separator = '\n'; // neither text has line ends

std::string take(const char* variable) {
    const char* value = std::getenv(variable);
    std::string taken = value != nullptr ? value : "";
    ::unsetenv(variable);
    return taken;
}

} // namespace

std::string Activation::asText() const {
    return startupId.empty() ? token : token + separator + startupId;
}

Activation Activation::fromText(const std::string& text) {
    const auto end = text.find(separator);
    return end == std::string::npos
               ? Activation{.token = text, .startupId = ""}
               : Activation{.token = text.substr(0, end), .startupId = text.substr(end + 1)};
}

Activation takeActivation() {
    return {.token = take("XDG_ACTIVATION_TOKEN"), .startupId = take("DESKTOP_STARTUP_ID")};
}

} // namespace varnhold
