#include "status/reauth_alerts.h"

#include <algorithm>

#include "base/json.h"
#include "base/unicode.h"

namespace varnhold {

namespace {

constexpr std::size_t dateLength = 10; // YYYY-MM-DD

std::string sinceOf(const json::Value& alert) {
    if (!alert.is_object()) {
        return {};
    }
    const auto since = alert.find("since");
    if (since == alert.end() || !since->is_string()) {
        return {};
    }
    return unicode::firstCharacters(since->get<std::string>(), dateLength);
}

} // namespace

std::vector<ReauthAlert> loadReauthAlerts(const Constants& constants) {
    std::vector<ReauthAlert> alerts;
    const Result<json::Value> document = json::parseFile(constants.reauthAlertsFile);
    if (!document || !document->is_object()) {
        return alerts;
    }
    for (const auto& [provider, alert] : document->items()) {
        alerts.push_back({provider, sinceOf(alert)});
    }
    std::stable_sort(alerts.begin(), alerts.end(), [](const auto& a, const auto& b) {
        return unicode::precedes(a.provider, b.provider);
    });
    return alerts;
}

} // namespace varnhold
