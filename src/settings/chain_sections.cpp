#include "settings/chain_sections.h"

#include <algorithm>

#include "records/tokens.h"

namespace varnhold {

namespace {

using Fields = SettingsFields;

constexpr std::string_view governorHelp =
    "The Governor is the system-level AI that:\n"
    "  • Intercepts code blocks from architect responses and runs them locally\n"
    "  • Synthesizes worker output into clean replies for you\n"
    "  • Sends failover notifications when chains move down\n"
    "  • Decides when to escalate problems\n"
    "\n"
    "Picking a fast, capable Governor matters MORE than any individual chain entry. It runs on "
    "every multi-step request. A bad Governor breaks every flow.\n"
    "\n"
    "Best picks: Cerebras Qwen 3 235B (fastest), Claude Sonnet 4.6, GPT-5.5-Pro.";

constexpr std::array<ChainSection, 6> sections{{
    {.title = "⚖️ Governor Chain",
     .list = TargetList::governor,
     .effort = &Fields::governorEffort,
     .contextTokens = &Fields::governorContextTokens,
     .topTargeted = &Fields::governorTopTargeted,
     .tint = {1.0, 0.93, 0.55},
     .hint = "The system brain. Runs code blocks locally, synthesizes worker output into your "
             "replies, and decides failover. Pick a fast, capable model — it runs on every "
             "request.",
     .help = governorHelp},
    {.title = "Architect Chain",
     .list = TargetList::architect,
     .effort = &Fields::architectEffort,
     .contextTokens = &Fields::architectContextTokens,
     .topTargeted = &Fields::architectTopTargeted,
     .tint = {0.85, 0.92, 1.0},
     .responseMode = &Fields::architectResponseMode,
     .hint = "The model that talks to you. Tried top-to-bottom — first success wins. Falls over "
             "to the next on failure."},
    {.title = "Coding Chain",
     .list = TargetList::worker,
     .effort = &Fields::workerEffort,
     .contextTokens = &Fields::workerContextTokens,
     .topTargeted = &Fields::workerTopTargeted,
     .tint = {0.88, 1.0, 0.88},
     .hint = "Silent worker — executes code and shell commands on your Mac. Never talks to you "
             "directly."},
    {.title = "Photo Chain",
     .list = TargetList::photo,
     .effort = &Fields::photoEffort,
     .contextTokens = &Fields::photoContextTokens,
     .topTargeted = &Fields::photoTopTargeted,
     .tint = {1.0, 0.95, 0.82},
     .hint = "Analyzes images you send to your bots before passing a description to the "
             "Architect."},
    {.title = "Video Chain",
     .list = TargetList::video,
     .effort = &Fields::videoEffort,
     .contextTokens = &Fields::videoContextTokens,
     .topTargeted = &Fields::videoTopTargeted,
     .tint = {1.0, 0.88, 0.95},
     .hint = "Analyzes videos you send to your bots before passing a description to the "
             "Architect."},
    {.title = "Audio Chain",
     .list = TargetList::voice,
     .effort = &Fields::voiceEffort,
     .contextTokens = &Fields::voiceContextTokens,
     .topTargeted = &Fields::voiceTopTargeted,
     .showEffort = false,
     .tint = {0.88, 0.95, 1.0},
     .hint = "Handles voice messages. Whisper transcribes speech-to-text; say converts replies "
             "back to audio."},
}};

} // namespace

const std::array<ChainSection, 6>& chainSections() {
    return sections;
}

const ChainSection& chainSection(TargetList list) {
    const auto found =
        std::find_if(sections.begin(), sections.end(),
                     [list](const ChainSection& section) { return section.list == list; });
    return found == sections.end() ? sections.front() : *found;
}

ChainStepperRow chainContextRow(double tokens, Ladder ladder) {
    const std::int64_t whole = truncatedTokens(tokens);
    return contextRow(whole, ladder, formatTokens(whole), tokens == 0);
}

void chooseResponse(ModelSelectorView& view, const ChainSection& section, ResponseMode mode) {
    if (section.responseMode != nullptr && view.*section.responseMode != mode) {
        view.*section.responseMode = mode;
        view.save();
    }
}

std::vector<BotConfig> botsOf(const SettingsFields& settings, TargetList list) {
    const auto assigned = settings.chainBotAssignments.find(std::string(chainKey(list)));
    return assigned == settings.chainBotAssignments.end()
               ? std::vector<BotConfig>()
               : assignedBots(settings.userBots, assigned->second);
}

} // namespace varnhold
