#include "shell/migration.h"

#include <array>
#include <string>

#include "base/files.h"

namespace varnhold {

namespace {

constexpr std::array<const char*, 15> migratedFiles{"bots.json",
                                                    "auth_config.json",
                                                    "model_library.json",
                                                    "model_preferences.json",
                                                    "architect_preferences.json",
                                                    "worker_preferences.json",
                                                    "photo_preferences.json",
                                                    "video_preferences.json",
                                                    "governor_preferences.json",
                                                    ".preferred-provider.json",
                                                    "effort_preferences.json",
                                                    "context_preferences.json",
                                                    "manager_preferences.json",
                                                    "custom_groups.json",
                                                    "PROMPT.md"};

} // namespace

void migrateFromLegacyPathIfNeeded(const Constants& constants) {
    const std::string oldFolder =
        constants.appHome + "/Library/Application Support/OstrelleAI/shared";
    if (!files::exists(oldFolder) || files::exists(constants.appSupportDir + "/bots.json")) {
        return;
    }
    for (const char* name : migratedFiles) {
        const std::string source = oldFolder + "/" + name;
        const std::string target = constants.appSupportDir + "/" + name;
        if (files::exists(source) && !files::exists(target)) {
            static_cast<void>(files::copyItem(source, target)); // the others still come over
        }
    }
}

} // namespace varnhold
