#include "doctor/surroundings.h"

#include <array>

namespace varnhold::doctor {

Constants withDataFolder(Constants constants, const std::string& folder) {
    constexpr std::array files{&Constants::effortPrefsFile,   &Constants::contextPrefsFile,
                               &Constants::modelLibraryFile,  &Constants::modelPrefsFile,
                               &Constants::workerPrefsFile,   &Constants::architectPrefsFile,
                               &Constants::photoPrefsFile,    &Constants::videoPrefsFile,
                               &Constants::voicePrefsFile,    &Constants::responseModeFile,
                               &Constants::governorChainFile, &Constants::governorPrefsFile,
                               &Constants::managerPrefsFile,  &Constants::authConfigFile,
                               &Constants::reauthAlertsFile,  &Constants::botsConfigFile,
                               &Constants::customGroupsFile,  &Constants::chainBotAssignmentsFile,
                               &Constants::promptFile,        &Constants::governorDBPath,
                               &Constants::appSupportDir};
    const std::size_t length = constants.appSupportDir.size();
    for (const auto file : files) {
        constants.*file = folder + (constants.*file).substr(length);
    }
    return constants;
}

} // namespace varnhold::doctor
