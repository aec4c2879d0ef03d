#include "settings/keepalive.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

#include "base/dates.h"
#include "base/files.h"
#include "base/unicode.h"
#include "settings/chain_sections.h"
#include "settings/settings_state.h"

namespace varnhold {

using namespace std::chrono_literals;

namespace {

constexpr auto tickInterval = 60s;
constexpr double longestTTL = 3600;
constexpr double warmAbove = 0.4;
constexpr double coolingAbove = 0.15;

// Seconds since the chain was last pinged; without end if it never was, or if the clock has been
// set back since and nobody knows.
double elapsedSince(const SettingsFields& settings, const std::string& key,
                    std::chrono::system_clock::time_point now) {
    const auto last = settings.lastPingTime.find(key);
    return last == settings.lastPingTime.end() || now < last->second
               ? std::numeric_limits<double>::infinity()
               : std::chrono::duration<double>(now - last->second).count();
}

} // namespace

double cacheTTL(const Constants& constants, const std::vector<AIModelItem>& models) {
    double seconds = longestTTL;
    for (const AIModelItem& model : models) {
        const std::string family = unicode::toLower(model.family);
        const auto& entries = constants.providerCacheTTL;
        const auto entry = std::find_if(entries.begin(), entries.end(), [&](const auto& each) {
            return family.find(each.first) != std::string::npos;
        });
        if (entry != entries.end()) {
            seconds = std::min(seconds, entry->second);
        }
    }
    return seconds;
}

void writePingFiles(const Constants& constants, platform::Clock& clock,
                    const std::vector<std::string>& roles) {
    for (const std::string& role : roles) {
        const std::string folder = constants.ostrelleAIDataDir + "/" + role;
        if (files::exists(folder)) {
            static_cast<void>(
                files::writeAtomically(folder + "/keepalive_ping", dates::iso8601(clock.now())));
        }
    }
}

std::vector<std::string> pingedRoles(const SettingsFields& settings, TargetList list) {
    std::vector<std::string> roles;
    for (const BotConfig& bot : botsOf(settings, list)) {
        if (!bot.role.empty() && bot.keepaliveOn()) {
            roles.push_back(bot.role);
        }
    }
    return roles;
}

std::optional<WarmthDot> warmthDot(const SettingsFields& settings, TargetList list) {
    const std::vector<BotConfig> bots = botsOf(settings, list);
    if (std::none_of(bots.begin(), bots.end(),
                     [](const BotConfig& bot) { return bot.keepaliveOn(); })) {
        return std::nullopt;
    }
    const auto entry = settings.cacheWarmth.find(std::string(chainKey(list)));
    const double warmth = entry == settings.cacheWarmth.end() ? 0.0 : entry->second;
    if (warmth > warmAbove) {
        return WarmthDot{WarmthColor::green, "Cache warm"};
    }
    if (warmth > coolingAbove) {
        return WarmthDot{WarmthColor::orange, "Cache cooling — ping soon"};
    }
    return WarmthDot{WarmthColor::gray, "Cache cold"};
}

void ModelSelectorView::startKeepaliveTimer() {
    keepaliveTimer.reset();
    keepaliveTimer = platform_.timers.repeat(tickInterval, [this] { tickKeepalive(); });
    tickKeepalive();
}

void ModelSelectorView::tickKeepalive() {
    const auto now = platform_.clock.now();
    for (const TargetList list : allTargetLists) {
        const std::vector<AIModelItem>& models = chainArray(list);
        if (models.empty() || !chainSection(list).keptWarm) {
            continue;
        }
        const std::string key(chainKey(list));
        const double ttl = cacheTTL(constants_, models);
        const double elapsed = elapsedSince(*this, key, now);
        later([this, key, warmth = std::max(0.0, 1.0 - elapsed / ttl)] {
            cacheWarmth[key] = warmth;
            changed();
        });
        if (elapsed < ttl - constants_.pingLeadSeconds) {
            continue;
        }
        const std::vector<std::string> roles = pingedRoles(*this, list);
        if (roles.empty()) {
            continue; // still due: whoever is assigned next is pinged by the next tick
        }
        writePingFiles(constants_, platform_.clock, roles);
        later([this, key, now] {
            lastPingTime[key] = now;
            changed();
        });
    }
}

} // namespace varnhold
