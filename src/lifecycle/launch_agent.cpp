#include "lifecycle/launch_agent.h"

#include <array>
#include <utility>

#include "base/files.h"
#include "base/json.h"
#include "base/unicode.h"
#include "shell/daemon_code.h"

namespace varnhold {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 8> providerVariables{{
    {"anthropicKey", "ANTHROPIC_API_KEY"},
    {"openaiKey", "OPENAI_API_KEY"},
    {"googleKey", "GOOGLE_API_KEY"},
    {"cerebrasKey", "CEREBRAS_API_KEY"},
    {"openrouterKey", "OPENROUTER_API_KEY"},
    {"mistralKey", "MISTRAL_API_KEY"},
    {"qwenKey", "QWEN_API_KEY"},
    {"deepseekKey", "DEEPSEEK_API_KEY"},
}};

std::map<std::string, std::string> environmentFor(const FleetContext& context, const BotConfig& bot,
                                                  const std::string& resources) {
    std::map<std::string, std::string> variables{
        {"HOME", context.constants.appHome},
        {"PATH", "/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin"},
        {"PYTHONPATH", resources},
        {"DAEMON_RESOURCES", resources},
        {"DAEMON_DATA_DIR", context.constants.appSupportDir}};
    // A sign-in file that can't be read leaves the agent without keys rather than without a start.
    if (const auto authConfig = json::parseFile(context.constants.authConfigFile)) {
        for (auto& [name, value] : signInVariables(*authConfig)) {
            variables.insert_or_assign(name, std::move(value));
        }
    }
    if (!bot.token.empty()) {
        variables.insert_or_assign("TELEGRAM_BOT_TOKEN", bot.token);
    }
    return variables;
}

PropertyList definitionOf(const FleetContext& context, const BotConfig& bot) {
    const std::string resources = daemonResourcesPath(context.platform.system.bundlePath());
    return {.label = bot.launchdLabel,
            .keepAlive = true,
            .runAtLoad = true,
            .environmentVariables = environmentFor(context, bot, resources),
            .programArguments = {findPython(), "-m", "provider_telegramd", "--dept", bot.role,
                                 "--data-dir",
                                 context.constants.appSupportDir + "/data/" + bot.role},
            .workingDirectory = resources,
            .standardOutPath = logPath(bot.role),
            .standardErrorPath = "/tmp/vh-" + bot.role + "-error.log"};
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

std::map<std::string, std::string> signInVariables(const json::Value& authConfig) {
    std::map<std::string, std::string> variables;
    if (!authConfig.is_object()) {
        return variables;
    }
    for (const auto& [key, variable] : providerVariables) {
        const auto found = authConfig.find(key);
        std::string value =
            found == authConfig.end() ? std::string() : valueOrEmpty(json::asString(*found));
        if (!value.empty()) {
            variables[variable] = std::move(value);
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

std::optional<std::string> generatePlist(const FleetContext& context, const BotConfig& bot) {
    if (!isStartable(bot)) {
        return std::nullopt;
    }
    const std::string path = propertyListPath(context.constants, bot.launchdLabel);
    const Result<std::string> content = encodePropertyList(definitionOf(context, bot));
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
