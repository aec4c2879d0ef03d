#include "shell/constants.h"

#include <utility>

#include "shell/version.h"

namespace varnhold {

Constants::Constants(const std::string& home)
    : Constants(home, home + "/Library/Application Support/Varnhold") {}

Constants::Constants(const std::string& home, std::string dataFolder)
    : providerCacheTTL{{"claude", 300},   {"anthropic", 300}, {"gemini", 300}, {"google", 300},
                       {"openai", 600},   {"gpt", 600},       {"qwen", 600},   {"deepseek", 600},
                       {"cerebras", 600}, {"ollama", 3600}},
      ostrelleAIDataDir(home + "/Library/Application Support/OstrelleAI/data"),
      VARNHOLD_VERSION(version),
      appHome(home),
      appSupportDir(std::move(dataFolder)) {}

} // namespace varnhold
