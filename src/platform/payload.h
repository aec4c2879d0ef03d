#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What a person drags, as the drop hands it over: a text that arrives later.
//
// A receiver is called once, with the text or with nothing where there is none. That may happen on
// any thread, within the call of the provider or long after it, so a receiver must not touch what
// belongs to the main thread.
namespace varnhold::platform {

using PayloadReceiver = std::function<void(std::optional<std::string> text)>;

// Begins to load the text and returns without waiting for it.
using PayloadProvider = std::function<void(PayloadReceiver receiver)>;
using PayloadProviders = std::vector<PayloadProvider>;

// A text that is at hand already.
[[nodiscard]] inline PayloadProvider textPayload(std::string text) {
    return [text = std::move(text)](const PayloadReceiver& receiver) { receiver(text); };
}

} // namespace varnhold::platform
