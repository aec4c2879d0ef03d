#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/uuid.h"
#include "platform/payload.h"
#include "settings/chain_editing.h"
#include "unit/settings/settings_home.h"

namespace varnhold::testing {

using platform::textPayload;

// A text that arrives when the test says so, on another thread.
class LatePayload {
public:
    [[nodiscard]] platform::PayloadProvider provider() {
        return [this](platform::PayloadReceiver receiver) { receiver_ = std::move(receiver); };
    }
    [[nodiscard]] bool wanted() const { return receiver_ != nullptr; }
    void arrive(std::optional<std::string> text);

private:
    platform::PayloadReceiver receiver_;
};

// An open settings state on which rows are dragged about.
struct Editing : SettingsHome {
    std::vector<Animation> animations;

    Editing();

    // Drops a text that is at hand, and lets it arrive.
    bool drop(const std::string& payload, TargetList list,
              std::optional<std::size_t> insertAt = std::nullopt);
    bool dropOnLibrary(const std::string& payload);
    bool dropBot(const std::string& payload, TargetList list);

    // Full saves since the test began or last asked.
    [[nodiscard]] int newSaves();

    [[nodiscard]] std::vector<std::string> ids(TargetList list) const;
    [[nodiscard]] std::string fileOf(TargetList list) const;

private:
    std::size_t seenDefaults_ = 0;
};

} // namespace varnhold::testing
