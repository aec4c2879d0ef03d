#include "lifecycle/launch_agent.h"

#include <map>
#include <utility>

#include "base/files.h"
#include "base/json.h"
#include "base/unicode.h"
#include "records/providers.h"

namespace varnhold {

namespace {

std::map<std::string, std::string> environmentFor(const Constants& constants, const BotConfig& bot,
                                                  const std::string& resources) {
    std::map<std::string, std::string> variables{{"HOME", constants.appHome},
                                                 {"PATH", agentPath},
                                                 {"PYTHONPATH", resources},
                                                 {"DAEMON_RESOURCES", resources},
                                                 {"DAEMON_DATA_DIR", constants.appSupportDir}};
    // A sign-in file that can't be read leaves the agent without keys rather than without a start.
    if (const auto authConfig = json::parseFile(constants.authConfigFile)) {
        for (auto& [name, value] : signInVariables(*authConfig)) {
            variables.insert_or_assign(name, std::move(value));
        }
    }
    if (!bot.token.empty()) {
        variables.insert_or_assign("TELEGRAM_BOT_TOKEN", bot.token);
    }
    return variables;
}

} // namespace

bool isStartable(const BotConfig& bot) {
    return bot.launchdLabel.ends_with(startableSuffix);
}

std::string propertyListPath(const Constants& constants, const std::string& label) {
    return constants.launchAgentsDir + "/" + label + ".plist";
}

std::string logPath(const std::string& role) {
    return "/tmp/vh-" + role + ".log";
}

std::string errorLogPath(const std::string& role) {
    return "/tmp/vh-" + role + "-error.log";
}

std::map<std::string, std::string> signInVariables(const json::Value& authConfig) {
    std::map<std::string, std::string> variables;
    if (!authConfig.is_object()) {
        return variables;
    }
    for (const Provider& provider : providers()) {
        const auto found = authConfig.find(provider.apiKey.name);
        std::string value =
            found == authConfig.end() ? std::string() : valueOrEmpty(json::asString(*found));
        if (!value.empty()) {
            variables[std::string(provider.variable)] = std::move(value);
        }
    }
    const auto tokens = authConfig.find("oauthTokens");
    if (tokens == authConfig.end()) {
        return variables;
    }
    const auto decoded = valueOrEmpty(json::asStringMap(*tokens));
    for (const auto& [provider, token] : decoded) {
        if (!token.empty()) {
            variables[unicode::toUpper(provider) + "_OAUTH_TOKEN"] = token;
        }
    }
    return variables;
}

PropertyList agentDefinition(const Constants& constants, const std::string& bundlePath,
                             const PathTest& exists, const BotConfig& bot) {
    const std::string resources = daemonResourcesPath(bundlePath, exists);
    return {.label = bot.launchdLabel,
            .keepAlive = true,
            .runAtLoad = true,
            .environmentVariables = environmentFor(constants, bot, resources),
            .programArguments = {findPython(exists), "-m", "provider_telegramd", "--dept", bot.role,
                                 "--data-dir", constants.appSupportDir + "/data/" + bot.role},
            .workingDirectory = resources,
            .standardOutPath = logPath(bot.role),
            .standardErrorPath = errorLogPath(bot.role)};
}

std::optional<std::string> generatePlist(const FleetContext& context, const BotConfig& bot) {
    if (!isStartable(bot)) {
        return std::nullopt;
    }
    const std::string path = propertyListPath(context.constants, bot.launchdLabel);
    const platform::System& system = context.platform.system;
    const auto exists = [&system](const std::string& place) { return system.exists(place); };
    const Result<std::string> content =
        encodePropertyList(agentDefinition(context.constants, system.bundlePath(), exists, bot));
    if (!content) {
        return std::nullopt;
    }
    // Both failures are dropped: an older list on disk is better than no agent.
    static_cast<void>(files::createDirectories(context.constants.launchAgentsDir));
    static_cast<void>(files::writeInPlace(path, *content));
    return path;
}

void regenerateAllPlists(const FleetContext& context) {
    for (const BotConfig& bot : loadBots(context.constants)) {
        if (!bot.paused() && isStartable(bot)) {
            generatePlist(context, bot);
        }
    }
}

} // namespace varnhold
