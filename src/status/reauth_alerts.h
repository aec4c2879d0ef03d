#pragma once

#include <string>
#include <vector>

#include "shell/constants.h"

namespace varnhold {

// A provider whose sign-in has failed, and since which day; the day may be empty.
struct ReauthAlert {
    std::string provider;
    std::string since;

    bool operator==(const ReauthAlert&) const = default;
};

// Alerts of the daemons' file, sorted by the provider's key as plain text. Empty on any failure.
[[nodiscard]] std::vector<ReauthAlert> loadReauthAlerts(const Constants& constants);

} // namespace varnhold
