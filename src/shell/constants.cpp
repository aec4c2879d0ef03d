#include "shell/constants.h"

#include "shell/version.h"

namespace varnhold {

Constants::Constants(const std::string& home)
    : providerCacheTTL{{"claude", 300},   {"anthropic", 300}, {"gemini", 300}, {"google", 300},
                       {"openai", 600},   {"gpt", 600},       {"qwen", 600},   {"deepseek", 600},
                       {"cerebras", 600}, {"ollama", 3600}},
      ostrelleAIDataDir(home + "/Library/Application Support/OstrelleAI/data"),
      VARNHOLD_VERSION(version),
      appHome(home) {}

} // namespace varnhold
