#include "doctor/settings_files.h"

#include <array>

#include "base/unicode.h"
#include "records/assignments.h"
#include "records/auth.h"
#include "records/bots.h"
#include "records/governor_choice.h"
#include "records/groups.h"
#include "records/models.h"
#include "records/preferences.h"
#include "records/providers.h"
#include "settings/chain_sections.h"

namespace varnhold::doctor {

namespace {

using json::Value;

Result<Reading> readFleet(const Value& document, const std::string&) {
    return json::decodeArray(document, decodeBot).map([](const std::vector<BotConfig>& bots) {
        return Reading{counted(bots.size(), "bot", "bots"), encodeBots(bots)};
    });
}

Result<Reading> readChain(const Value& document, const std::string&) {
    return decodeModels(document).map([](const std::vector<AIModelItem>& models) {
        return Reading{counted(models.size(), "model", "models"), encodeChain(models)};
    });
}

Result<Reading> readLibrary(const Value&, const std::string& text) {
    return decodeLibrary(text).map([](const ModelLibrary& library) {
        return Reading{counted(library.models.size(), "model", "models"), encodeLibrary(library)};
    });
}

Result<Reading> readGroups(const Value& document, const std::string&) {
    return json::decodeArray(document, decodeGroup)
        .map([](const std::vector<CustomBotGroup>& groups) {
            return Reading{counted(groups.size(), "group", "groups"),
                           valueOrEmpty(encodeGroups(groups))};
        });
}

Result<Reading> readAssignments(const Value&, const std::string& text) {
    return decodeAssignments(text).map([](const ChainBotAssignments& assignments) {
        std::size_t count = 0;
        for (const auto& [chain, labels] : assignments) {
            count += labels.size();
        }
        return Reading{counted(count, "assignment", "assignments"), encodeAssignments(assignments)};
    });
}

Result<Reading> readEfforts(const Value& document, const std::string& text) {
    return decodeEffortPrefs(text).map([&document](const EffortPrefs& prefs) {
        Reading reading{counted(chainCount, "chain", "chains"), encodeEffortPrefs(prefs)};
        const SettingsFields usual;
        for (const TargetList list : allTargetLists) {
            const std::string chain(chainKey(list));
            const auto found = document.find(chain);
            if (found != document.end() && found->is_string() &&
                !effortLevelFromRawValue(found->get<std::string>())) {
                const std::string level(rawValue(usual.*chainSection(list).effort));
                reading.partly.push_back(
                    {chain + ": no level of effort", "The chain falls back to " + level + "."});
            }
        }
        return reading;
    });
}

Result<Reading> readBudgets(const Value&, const std::string& text) {
    return decodeContextPrefs(text).map([](const ContextPrefs& prefs) {
        return Reading{counted(chainCount, "chain", "chains"), encodeContextPrefs(prefs)};
    });
}

Result<Reading> readMode(const Value&, const std::string& text) {
    return decodeResponseMode(text).map([](ResponseMode mode) {
        return Reading{std::string(rawValue(mode)), encodeResponseMode(mode)};
    });
}

// What agents are started with is read more leniently than by the window, and apart from it.
void checkTokens(const Value& document, Reading& reading) {
    const auto tokens = document.find("oauthTokens");
    if (tokens == document.end()) {
        return;
    }
    if (const auto decoded = json::asStringMap(*tokens); !decoded) {
        std::string reason = decoded.error();
        reason.erase(0, reason.starts_with('.') ? 1 : 0);
        reading.partly.push_back({"oauthTokens: " + reason, "No agent gets any of these tokens."});
    }
}

Result<Reading> readAuth(const Value& document, const std::string& text) {
    return decodeAuthConfig(text).map([&document](const AuthConfig& config) {
        Reading reading{"sign-in of " + std::to_string(providerCount) + " providers",
                        encodeAuthConfig(config)};
        const SignIn usual;
        for (const Provider& each : providers()) {
            if (each.hasMethod() && !authMethodFromRawValue(*each.method.of(config))) {
                reading.partly.push_back(
                    {std::string(each.method.name) + ": no way to sign in",
                     "Counts as \"" + std::string(rawValue(usual.*each.chosenMethod)) + "\"."});
            }
        }
        checkTokens(document, reading);
        return reading;
    });
}

Result<Reading> readChoice(const Value&, const std::string& text) {
    return decodeGovernorChoice(text).map([&text](const GovernorChoice& choice) {
        const GovernorChoice fallback;
        return Reading{
            choice == fallback ? "the default" : "a provider or a model",
            withGovernorChoice(text, choice.provider.value_or(""), choice.model.value_or(""), "")};
    });
}

Result<Reading> readAlerts(const Value& document, const std::string&) {
    if (!document.is_object()) {
        return failure(std::string("expected an object, found ") + document.type_name());
    }
    Reading reading{counted(document.size(), "alert", "alerts")};
    for (const auto& [provider, alert] : document.items()) {
        if (!alert.is_object()) {
            reading.partly.push_back({provider + ": expected an object, found " + alert.type_name(),
                                      "The alert is shown without its date."});
        }
    }
    return reading;
}

Result<Reading> readNotices(const Value& document, const std::string&) {
    if (!document.is_array()) {
        return failure(std::string("expected a list, found ") + document.type_name());
    }
    for (std::size_t i = 0; i < document.size(); ++i) {
        if (!document[i].is_object()) {
            return failure("[" + std::to_string(i) + "].expected an object, found " +
                           document[i].type_name());
        }
    }
    return Reading{document.empty() ? "empty: stays and shows nothing"
                                    : counted(document.size(), "notice", "notices") + " to show"};
}

Result<Reading> readPrompt(const Value&, const std::string& text) {
    if (!unicode::isValidUtf8(text)) {
        return failure("not UTF-8 text");
    }
    return Reading{unicode::trimmed(text).empty() ? "blank" : "the master prompt"};
}

constexpr std::string_view emptyChain =
    "Reads as an empty chain. Opening the settings window writes that empty chain over it.";
constexpr std::string_view noChainYet =
    "Reads as an empty chain until the settings window is first opened.";
constexpr std::string_view defaults =
    "Reads as the defaults. Opening the settings window writes those over it.";
constexpr std::string_view defaultsYet =
    "Reads as the defaults until the settings window is first opened.";

// NOLINTNEXTLINE(cert-err58-cpp): constant tables can't fail
const std::array<SettingsFile, 2> beforeChains{{
    {&Constants::botsConfigFile, "", readFleet,
     "Reads as an empty fleet: no bot is started or shown. Opening the settings window replaces "
     "the file by one that holds the governor alone.",
     "Reads as an empty fleet.", Level::warning},
    {&Constants::modelLibraryFile, "", readLibrary,
     "The library's list stays empty, and no model can be dragged to a chain.",
     "The library's list stays empty."},
}};

// NOLINTNEXTLINE(cert-err58-cpp): likewise
const std::array<SettingsFile, 11> behindChains{{
    {&Constants::chainBotAssignmentsFile, "", readAssignments,
     "No bot is assigned to any chain. Opening the settings window writes that over it.",
     "No bot is assigned to any chain."},
    {&Constants::effortPrefsFile, "", readEfforts, defaults, defaultsYet},
    {&Constants::contextPrefsFile, "", readBudgets, defaults, defaultsYet},
    {&Constants::responseModeFile, "", readMode, defaults, defaultsYet},
    {&Constants::authConfigFile, "", readAuth,
     "The settings window shows the keys that it keeps itself, and opening it writes those over "
     "the file. Agents start with those keys alone that can still be read.",
     "Agents start without keys; the settings window shows those that it keeps itself."},
    {&Constants::governorPrefsFile, "", readChoice,
     "The governor's choice is the default. Opening the settings window replaces the file, with "
     "all that others keep in it.",
     defaultsYet},
    {&Constants::customGroupsFile, "", readGroups,
     "The menu shows no groups, and the settings window those of the backup, which is older.", ""},
    {&Constants::customGroupsFile, ".bak", readGroups, "It can't stand in for custom_groups.json.",
     "", Level::note, true, false},
    {&Constants::promptFile, "", readPrompt,
     "The master prompt is empty in the settings window; what is typed there replaces the file.",
     "", Level::note, false},
    {&Constants::reauthAlertsFile, "", readAlerts, "No alert is shown in the menu.", "",
     Level::note, true, false},
    {&Constants::appSupportDir, "/pending_model_notices.json", readNotices,
     "It stays, is read again every eight seconds, and shows nothing.", "", Level::note, true,
     false},
}};

std::vector<SettingsFile> allFiles() {
    std::vector<SettingsFile> all(beforeChains.begin(), beforeChains.end());
    for (const TargetList list : allTargetLists) {
        all.push_back({chainSection(list).file, "", readChain, emptyChain, noChainYet});
    }
    all.insert(all.end(), behindChains.begin(), behindChains.end());
    return all;
}

void compareKeys(const Value& found, const Value& kept, const std::string& way,
                 std::vector<std::string>& dropped) {
    if (found.is_object() && kept.is_object()) {
        for (const auto& [key, value] : found.items()) {
            const std::string here = way + key + ": ";
            const auto other = kept.find(key);
            if (other != kept.end()) {
                compareKeys(value, *other, here, dropped);
            } else if (!value.is_null()) {
                dropped.push_back(here);
            }
        }
    } else if (found.is_array() && kept.is_array()) {
        for (std::size_t i = 0; i < found.size() && i < kept.size(); ++i) {
            compareKeys(found[i], kept[i], way + "[" + std::to_string(i) + "].", dropped);
        }
    }
}

} // namespace

std::span<const SettingsFile> settingsFiles() {
    static const std::vector<SettingsFile> files = allFiles();
    return files;
}

std::string pathOf(const SettingsFile& file, const Constants& constants) {
    return constants.*file.path + std::string(file.suffix);
}

std::vector<std::string> droppedKeys(const Value& document, const Value& rewritten) {
    std::vector<std::string> dropped;
    compareKeys(document, rewritten, {}, dropped);
    return dropped;
}

} // namespace varnhold::doctor
