#pragma once

#include <array>
#include <map>
#include <string>

// Every path and tuning constant that more than one place uses.
//
// One value is made on the main thread at the very start, from the home folder alone, and is only
// read afterwards, from any thread. Members are initialised in the order in which they stand here;
// one that builds on another uses its finished value. Nothing else in the program spells a path
// out.
namespace varnhold {

struct Constants {
    // `home`: the user's home folder without a trailing slash.
    explicit Constants(const std::string& home);

    // Seconds for which a provider keeps a prompt cached, by provider family in lower case.
    std::map<std::string, double> providerCacheTTL;
    // Seconds before a cache lapses at which a keepalive ping goes out.
    double pingLeadSeconds = 45;

    // The daemons' own folder; this program never creates it.
    std::string ostrelleAIDataDir;
    std::string VARNHOLD_VERSION;
    std::string appHome;
    std::string appSupportDir;
    std::string launchAgentsDir;

    std::string effortPrefsFile;
    std::string contextPrefsFile;
    std::string modelLibraryFile;
    std::string modelPrefsFile;
    std::string workerPrefsFile;
    std::string architectPrefsFile;
    std::string photoPrefsFile;
    std::string videoPrefsFile;
    std::string voicePrefsFile;
    std::string responseModeFile;
    // The next two are crossed against what their names suggest; the daemons know them so.
    std::string governorChainFile; // the governor's chain
    std::string governorPrefsFile; // the provider that the governor prefers
    std::string managerPrefsFile;
    std::string authConfigFile;
    std::string reauthAlertsFile;
    std::string botsConfigFile;
    std::string customGroupsFile;
    std::string chainBotAssignmentsFile;
    std::string promptFile;
    std::string governorDBPath;

    std::string iconDir;
    std::string appIconFile;

    // Context budgets in tokens that the steppers reach; 0 leaves the choice to the model.
    std::array<int, 10> contextLadder{0,      8000,   16000,  32000,   64000,
                                      128000, 200000, 400000, 1000000, 2000000};
    // Hue of the last bot's bar, on a circle of 0 to 1: short of the wrap back to red.
    double RAINBOW_END = 0.83;
};

} // namespace varnhold
