#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/json_fwd.h"
#include "base/result.h"
#include "shell/constants.h"

// The record of one managed agent, and bots.json, the list of them.
//
// The file is one JSON array in display order, written compactly. It is the single source of truth
// for which agents exist and is read afresh at every use. Values only; any thread.
namespace varnhold {

enum class BotService { telegram, slack };

inline constexpr std::array allBotServices{BotService::telegram, BotService::slack};

// "Telegram" or "Slack", to the letter, in both directions.
[[nodiscard]] std::string_view rawValue(BotService service);
[[nodiscard]] std::optional<BotService> botServiceFromRawValue(std::string_view raw);

struct BotConfig {
    std::string icon;
    std::string title;
    std::string token; // secret in clear text; empty for a bot that has none
    // Department key: the daemon's --dept, its data folder and its log files.
    std::string role;
    std::string launchdLabel; // identity; of two records with one label the first counts
    BotService service = BotService::telegram;
    std::optional<std::string> prompt = std::nullopt;
    std::optional<bool> isPaused = std::nullopt; // true: left out of every start
    std::optional<bool> isSystem = std::nullopt; // true: can't be removed
    std::optional<bool> keepaliveEnabled = std::nullopt;

    [[nodiscard]] const std::string& id() const { return launchdLabel; }
    [[nodiscard]] bool keepaliveOn() const { return keepaliveEnabled.value_or(true); }
    [[nodiscard]] bool paused() const { return isPaused.value_or(false); }

    bool operator==(const BotConfig&) const = default;
};

// The label under which an agent with this role runs. The role is taken as typed.
[[nodiscard]] std::string labelOfRole(const std::string& role);

[[nodiscard]] Result<BotConfig> decodeBot(const json::Value& value);
[[nodiscard]] json::Value encode(const BotConfig& bot);

[[nodiscard]] Result<std::vector<BotConfig>> decodeBots(std::string_view text);
[[nodiscard]] std::string encodeBots(const std::vector<BotConfig>& bots);

// The records of the file; the reason tells why there are none.
[[nodiscard]] Result<std::vector<BotConfig>> readBots(const std::string& path);

// An unreadable or malformed file is an empty fleet.
[[nodiscard]] std::vector<BotConfig> loadBots(const Constants& constants);

// The same for who asks again and again: the file is read each time, but what it says is only
// made out anew when it says something else. One thread at a time.
class KnownBots final {
public:
    [[nodiscard]] const std::vector<BotConfig>& load(const Constants& constants);

private:
    std::string content_; // that of no file is what an empty one has, no fleet
    std::vector<BotConfig> bots_;
};

[[nodiscard]] std::vector<std::string> rolesOf(const std::vector<BotConfig>& bots);

// Role of each record in file order, by the same rules.
[[nodiscard]] std::vector<std::string> botRolesInOrder(const Constants& constants);

} // namespace varnhold

template <>
struct std::hash<varnhold::BotService> {
    std::size_t operator()(varnhold::BotService service) const noexcept {
        return static_cast<std::size_t>(service);
    }
};
