#include "settings/settings_fields.h"

namespace varnhold {

namespace {

AIModelItem localTool(const char* uniqueId, const char* id, const char* name) {
    return {.uniqueId = uniqueId,
            .id = id,
            .name = name,
            .family = "Local",
            .color = "teal",
            .type = "local",
            .provider_key = "local"};
}

constexpr const char* governorPrompt =
    "You are the Governor AI, the overarching system monitor for Ostrelle LLC. Your mission is to "
    "facilitate communication between Architects (Brains) and Workers (Hands). Monitor "
    "conversation outputs; if you detect a code block (bash, python, cli), intercept it and "
    "forward it to the appropriate Worker Fallback Chain for local execution on Corvin's machine.";

} // namespace

std::vector<AIModelItem> builtInLocalTools() {
    return {
        localTool("LOCAL-WHISPER-0000", "local:whisper", "Whisper (transcription, free/local)"),
        localTool("LOCAL-SAY-00000000", "local:say", "say (voice reply, free/local)"),
    };
}

BotConfig builtInGovernorBot() {
    return {.icon = "⚖️",
            .title = "Governor AI",
            .token = "",
            .role = "governor",
            .launchdLabel = "com.ostrelleai.governor",
            .service = BotService::telegram,
            .prompt = governorPrompt,
            .isPaused = false,
            .isSystem = true};
}

} // namespace varnhold
