#pragma once

#include <array>
#include <map>
#include <string>

// Every path and tuning constant that more than one place uses.
//
// One value is made on the main thread at the very start, from the folders given, and is only
// read afterwards, from any thread. Members are initialised in the order in which they stand here;
// one that builds on another uses its finished value. A path that one place alone uses is
// spelled out there.
namespace varnhold {

struct Constants {
    // `home`: the user's home folder without a trailing slash.
    explicit Constants(const std::string& home);
    // With the program's own files in another folder, such as a copy of them.
    Constants(const std::string& home, std::string dataFolder);

    // Seconds for which a provider keeps a prompt cached, by provider family in lower case.
    std::map<std::string, double> providerCacheTTL;
    // Seconds before a cache lapses at which a keepalive ping goes out.
    double pingLeadSeconds = 45;

    // The daemons' own folder; this program never creates it.
    std::string ostrelleAIDataDir;
    std::string VARNHOLD_VERSION;
    std::string appHome;
    std::string appSupportDir;
    std::string launchAgentsDir = appHome + "/Library/LaunchAgents";

    std::string effortPrefsFile = appSupportDir + "/effort_preferences.json";
    std::string contextPrefsFile = appSupportDir + "/context_preferences.json";
    std::string modelLibraryFile = appSupportDir + "/model_library.json";
    std::string modelPrefsFile = appSupportDir + "/model_preferences.json";
    std::string workerPrefsFile = appSupportDir + "/worker_preferences.json";
    std::string architectPrefsFile = appSupportDir + "/architect_preferences.json";
    std::string photoPrefsFile = appSupportDir + "/photo_preferences.json";
    std::string videoPrefsFile = appSupportDir + "/video_preferences.json";
    std::string voicePrefsFile = appSupportDir + "/voice_preferences.json";
    std::string responseModeFile = appSupportDir + "/response_mode.json";
    // The next two are crossed against what their names suggest; the daemons know them so.
    std::string governorChainFile =
        appSupportDir + "/governor_preferences.json"; // the governor's chain
    std::string governorPrefsFile =
        appSupportDir + "/.preferred-provider.json"; // the provider that the governor prefers
    std::string managerPrefsFile = appSupportDir + "/manager_preferences.json";
    std::string authConfigFile = appSupportDir + "/auth_config.json";
    std::string reauthAlertsFile = appSupportDir + "/reauth_alerts.json";
    std::string botsConfigFile = appSupportDir + "/bots.json";
    std::string customGroupsFile = appSupportDir + "/custom_groups.json";
    std::string chainBotAssignmentsFile = appSupportDir + "/chain_bot_assignments.json";
    std::string promptFile = appSupportDir + "/PROMPT.md";
    std::string governorDBPath = appSupportDir + "/governor.db";

    std::string iconDir = appHome + "/Library/Application Support/Varnhold/icons";
    std::string appIconFile = appHome + "/Library/Application Support/Varnhold/icon.png";

    // Context budgets in tokens that the steppers reach; 0 leaves the choice to the model.
    std::array<int, 10> contextLadder{0,      8000,   16000,  32000,   64000,
                                      128000, 200000, 400000, 1000000, 2000000};
    // Hue of the last bot's bar, on a circle of 0 to 1: short of the wrap back to red.
    double RAINBOW_END = 0.83;
};

} // namespace varnhold
