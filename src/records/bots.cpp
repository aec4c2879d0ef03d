#include "records/bots.h"

#include <utility>

#include "base/files.h"
#include "base/json.h"
#include "records/raw_values.h"

namespace varnhold {

namespace {

Result<BotService> decodeService(const json::Value& value) {
    return decodeCase(allBotServices, value, "service");
}

Result<std::vector<BotConfig>> decodeBotArray(const json::Value& value) {
    return json::decodeArray(value, decodeBot);
}

} // namespace

std::string_view rawValue(BotService service) {
    return service == BotService::telegram ? "Telegram" : "Slack";
}

std::optional<BotService> botServiceFromRawValue(std::string_view raw) {
    return caseOf(allBotServices, raw);
}

std::string labelOfRole(const std::string& role) {
    return "com.ostrelleai." + role + ".telegramd";
}

Result<BotConfig> decodeBot(const json::Value& value) {
    json::ObjectReader in(value);
    BotConfig bot{.icon = in.string("icon"),
                  .title = in.string("title"),
                  .token = in.string("token"),
                  .role = in.string("role"),
                  .launchdLabel = in.string("launchdLabel"),
                  .service = in.required("service", decodeService),
                  .prompt = in.optionalString("prompt"),
                  .isPaused = in.optionalBool("isPaused"),
                  .isSystem = in.optionalBool("isSystem"),
                  .keepaliveEnabled = in.optionalBool("keepaliveEnabled")};
    return in.finish(std::move(bot));
}

json::Value encode(const BotConfig& bot) {
    json::Value out = json::Value::object();
    out["icon"] = bot.icon;
    out["title"] = bot.title;
    out["token"] = bot.token;
    out["role"] = bot.role;
    out["launchdLabel"] = bot.launchdLabel;
    out["service"] = rawValue(bot.service);
    json::setPresent(out, "prompt", bot.prompt);
    json::setPresent(out, "isPaused", bot.isPaused);
    json::setPresent(out, "isSystem", bot.isSystem);
    json::setPresent(out, "keepaliveEnabled", bot.keepaliveEnabled);
    return out;
}

Result<std::vector<BotConfig>> decodeBots(std::string_view text) {
    return json::parse(text).and_then(decodeBotArray);
}

std::string encodeBots(const std::vector<BotConfig>& bots) {
    json::Value out = json::Value::array();
    for (const BotConfig& bot : bots) {
        out.push_back(encode(bot));
    }
    return json::compact(out);
}

Result<std::vector<BotConfig>> readBots(const std::string& path) {
    return files::read(path).and_then(decodeBots);
}

std::vector<BotConfig> loadBots(const Constants& constants) {
    return valueOrEmpty(readBots(constants.botsConfigFile));
}

const std::vector<BotConfig>& KnownBots::load(const Constants& constants) {
    std::string content = valueOrEmpty(files::read(constants.botsConfigFile));
    if (content != content_) {
        content_ = std::move(content);
        bots_ = valueOrEmpty(decodeBots(content_));
    }
    return bots_;
}

std::vector<std::string> rolesOf(const std::vector<BotConfig>& bots) {
    std::vector<std::string> roles;
    roles.reserve(bots.size());
    for (const BotConfig& bot : bots) {
        roles.push_back(bot.role);
    }
    return roles;
}

std::vector<std::string> botRolesInOrder(const Constants& constants) {
    return rolesOf(loadBots(constants));
}

} // namespace varnhold
