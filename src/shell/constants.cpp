#include "shell/constants.h"

#include "shell/version.h"

namespace varnhold {

Constants::Constants(const std::string& home)
    : providerCacheTTL{{"claude", 300},   {"anthropic", 300}, {"gemini", 300}, {"google", 300},
                       {"openai", 600},   {"gpt", 600},       {"qwen", 600},   {"deepseek", 600},
                       {"cerebras", 600}, {"ollama", 3600}},
      ostrelleAIDataDir(home + "/Library/Application Support/OstrelleAI/data"),
      VARNHOLD_VERSION(version),
      appHome(home),
      appSupportDir(appHome + "/Library/Application Support/Varnhold"),
      launchAgentsDir(appHome + "/Library/LaunchAgents"),
      effortPrefsFile(appSupportDir + "/effort_preferences.json"),
      contextPrefsFile(appSupportDir + "/context_preferences.json"),
      modelLibraryFile(appSupportDir + "/model_library.json"),
      modelPrefsFile(appSupportDir + "/model_preferences.json"),
      workerPrefsFile(appSupportDir + "/worker_preferences.json"),
      architectPrefsFile(appSupportDir + "/architect_preferences.json"),
      photoPrefsFile(appSupportDir + "/photo_preferences.json"),
      videoPrefsFile(appSupportDir + "/video_preferences.json"),
      voicePrefsFile(appSupportDir + "/voice_preferences.json"),
      responseModeFile(appSupportDir + "/response_mode.json"),
      governorChainFile(appSupportDir + "/governor_preferences.json"),
      governorPrefsFile(appSupportDir + "/.preferred-provider.json"),
      managerPrefsFile(appSupportDir + "/manager_preferences.json"),
      authConfigFile(appSupportDir + "/auth_config.json"),
      reauthAlertsFile(appSupportDir + "/reauth_alerts.json"),
      botsConfigFile(appSupportDir + "/bots.json"),
      customGroupsFile(appSupportDir + "/custom_groups.json"),
      chainBotAssignmentsFile(appSupportDir + "/chain_bot_assignments.json"),
      promptFile(appSupportDir + "/PROMPT.md"),
      governorDBPath(appSupportDir + "/governor.db"),
      iconDir(appHome + "/Library/Application Support/Varnhold/icons"),
      appIconFile(appHome + "/Library/Application Support/Varnhold/icon.png") {}

} // namespace varnhold
