#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"
#include "settings/settings_fields.h"
#include "settings/target_list.h"
#include "shell/constants.h"

// How warm the providers' prompt caches are, and the small files that ask the daemons to keep them
// so.
//
// The daemons do the pinging; a file's arrival is all they are told. That it was asked for counts
// as a warm cache: nobody here knows what became of it. Main thread. A file that can't be written
// is left out without a word.
namespace varnhold {

// Seconds for which the whole chain's caches hold: those of the model that forgets soonest.
[[nodiscard]] double cacheTTL(const Constants& constants, const std::vector<AIModelItem>& models);

// Leaves the moment, as text, in the data folder of each role; a role without a folder has never
// run and gets none.
void writePingFiles(const Constants& constants, platform::Clock& clock,
                    const std::vector<std::string>& roles);

// Roles of the chain's bots that want to be kept warm, in the order of the bots.
[[nodiscard]] std::vector<std::string> pingedRoles(const SettingsFields& settings, TargetList list);

enum class WarmthColor { green, orange, gray };

struct WarmthDot {
    WarmthColor color = WarmthColor::gray;
    std::string_view toolTip;

    bool operator==(const WarmthDot&) const = default;
};

// The dot in a chain's header; none if no bot of the chain wants to be kept warm.
[[nodiscard]] std::optional<WarmthDot> warmthDot(const SettingsFields& settings, TargetList list);

} // namespace varnhold
