#include "shell/constants.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

namespace varnhold {
namespace {

TEST(Constants, BaseFoldersAndVersion) {
    const Constants c("/Users/ada");
    EXPECT_EQ(c.ostrelleAIDataDir, "/Users/ada/Library/Application Support/OstrelleAI/data");
    EXPECT_EQ(c.VARNHOLD_VERSION, "7.0.0");
    EXPECT_EQ(c.appHome, "/Users/ada");
    EXPECT_EQ(c.appSupportDir, "/Users/ada/Library/Application Support/Varnhold");
    EXPECT_EQ(c.launchAgentsDir, "/Users/ada/Library/LaunchAgents");
}

TEST(Constants, EveryFileLiesInTheProgramsFolderUnderItsName) {
    const Constants c("/h");
    const std::string folder = "/h/Library/Application Support/Varnhold";
    EXPECT_EQ(c.effortPrefsFile, folder + "/effort_preferences.json");
    EXPECT_EQ(c.contextPrefsFile, folder + "/context_preferences.json");
    EXPECT_EQ(c.modelLibraryFile, folder + "/model_library.json");
    EXPECT_EQ(c.modelPrefsFile, folder + "/model_preferences.json");
    EXPECT_EQ(c.workerPrefsFile, folder + "/worker_preferences.json");
    EXPECT_EQ(c.architectPrefsFile, folder + "/architect_preferences.json");
    EXPECT_EQ(c.photoPrefsFile, folder + "/photo_preferences.json");
    EXPECT_EQ(c.videoPrefsFile, folder + "/video_preferences.json");
    EXPECT_EQ(c.voicePrefsFile, folder + "/voice_preferences.json");
    EXPECT_EQ(c.responseModeFile, folder + "/response_mode.json");
    EXPECT_EQ(c.managerPrefsFile, folder + "/manager_preferences.json");
    EXPECT_EQ(c.authConfigFile, folder + "/auth_config.json");
    EXPECT_EQ(c.reauthAlertsFile, folder + "/reauth_alerts.json");
    EXPECT_EQ(c.botsConfigFile, folder + "/bots.json");
    EXPECT_EQ(c.customGroupsFile, folder + "/custom_groups.json");
    EXPECT_EQ(c.chainBotAssignmentsFile, folder + "/chain_bot_assignments.json");
    EXPECT_EQ(c.promptFile, folder + "/PROMPT.md");
    EXPECT_EQ(c.governorDBPath, folder + "/governor.db");
}

TEST(Constants, TheGovernorsTwoFilesAreCrossedAgainstTheirNames) {
    const Constants c("/h");
    EXPECT_EQ(c.governorChainFile,
              "/h/Library/Application Support/Varnhold/governor_preferences.json");
    EXPECT_EQ(c.governorPrefsFile,
              "/h/Library/Application Support/Varnhold/.preferred-provider.json");
}

TEST(Constants, TheIconLiesInTheSameFolderAsTheRest) {
    const Constants c("/h");
    EXPECT_EQ(c.iconDir, "/h/Library/Application Support/Varnhold/icons");
    EXPECT_EQ(c.appIconFile, "/h/Library/Application Support/Varnhold/icon.png");
    EXPECT_EQ(c.appIconFile, c.appSupportDir + "/icon.png");
}

TEST(Constants, CacheLifetimesOfTenProviderFamilies) {
    const std::map<std::string, double> expected{
        {"claude", 300}, {"anthropic", 300}, {"gemini", 300},   {"google", 300},   {"openai", 600},
        {"gpt", 600},    {"qwen", 600},      {"deepseek", 600}, {"cerebras", 600}, {"ollama", 3600},
    };
    EXPECT_EQ(expected.size(), 10U);
    EXPECT_EQ(Constants("/h").providerCacheTTL, expected);
    EXPECT_EQ(Constants("/h").pingLeadSeconds, 45.0);
}

TEST(Constants, TheContextLadderHasTenSteps) {
    const std::array<int, 10> expected{0,      8000,   16000,  32000,   64000,
                                       128000, 200000, 400000, 1000000, 2000000};
    EXPECT_EQ(Constants("/h").contextLadder, expected);
}

TEST(Constants, TheRainbowEndsShortOfItsBeginning) {
    EXPECT_EQ(Constants("/h").RAINBOW_END, 0.83);
}

} // namespace
} // namespace varnhold
