#include "app/activation.h"

#include <cstdlib>

#include "base/activation_token.h"

namespace varnhold {

namespace {

constexpr char separator = '\n'; // neither text has line ends

constexpr const char* startupVariable = "DESKTOP_STARTUP_ID";

std::string given(const char* variable) {
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): at start
    return value != nullptr ? value : "";
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

Activation givenActivation() {
    return {.token = given(activationTokenVariable), .startupId = given(startupVariable)};
}

Activation takeActivation() {
    Activation taken = givenActivation();
    ::unsetenv(activationTokenVariable); // NOLINT(concurrency-mt-unsafe): at start
    ::unsetenv(startupVariable);         // NOLINT(concurrency-mt-unsafe): at start
    return taken;
}

} // namespace varnhold
