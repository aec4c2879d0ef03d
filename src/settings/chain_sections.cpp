#include "settings/chain_sections.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "records/preferences.h"
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

constexpr std::array<ChainSection, chainCount> sections{{
    {.list = TargetList::governor,
     .name = "Governor",
     .title = "⚖️ Governor Chain",
     .row = 0,
     .tint = {1.0, 0.93, 0.55},
     .file = &Constants::governorChainFile,
     .models = &Fields::governorModels,
     .effort = &Fields::governorEffort,
     .contextTokens = &Fields::governorContextTokens,
     .topTargeted = &Fields::governorTopTargeted,
     .takesCerebras = true,
     .hint = "The system brain. Runs code blocks locally, synthesizes worker output into your "
             "replies, and decides failover. Pick a fast, capable model — it runs on every "
             "request.",
     .help = governorHelp},
    {.list = TargetList::architect,
     .name = "Architect",
     .title = "Architect Chain",
     .row = 1,
     .tint = {0.85, 0.92, 1.0},
     .file = &Constants::architectPrefsFile,
     .models = &Fields::architectModels,
     .effort = &Fields::architectEffort,
     .contextTokens = &Fields::architectContextTokens,
     .topTargeted = &Fields::architectTopTargeted,
     .responseMode = &Fields::architectResponseMode,
     .takesCerebras = true,
     .hint = "The model that talks to you. Tried top-to-bottom — first success wins. Falls over "
             "to the next on failure."},
    {.list = TargetList::worker,
     .name = "Coding",
     .title = "Coding Chain",
     .row = 1,
     .tint = {0.88, 1.0, 0.88},
     .file = &Constants::workerPrefsFile,
     .models = &Fields::workerModels,
     .effort = &Fields::workerEffort,
     .contextTokens = &Fields::workerContextTokens,
     .topTargeted = &Fields::workerTopTargeted,
     .hint = "Silent worker — executes code and shell commands on your Mac. Never talks to you "
             "directly."},
    {.list = TargetList::photo,
     .name = "Photo",
     .title = "Photo Chain",
     .row = 2,
     .tint = {1.0, 0.95, 0.82},
     .file = &Constants::photoPrefsFile,
     .models = &Fields::photoModels,
     .effort = &Fields::photoEffort,
     .contextTokens = &Fields::photoContextTokens,
     .topTargeted = &Fields::photoTopTargeted,
     .hint = "Analyzes images you send to your bots before passing a description to the "
             "Architect."},
    {.list = TargetList::video,
     .name = "Video",
     .title = "Video Chain",
     .row = 2,
     .tint = {1.0, 0.88, 0.95},
     .file = &Constants::videoPrefsFile,
     .models = &Fields::videoModels,
     .effort = &Fields::videoEffort,
     .contextTokens = &Fields::videoContextTokens,
     .topTargeted = &Fields::videoTopTargeted,
     .hint = "Analyzes videos you send to your bots before passing a description to the "
             "Architect."},
    {.list = TargetList::voice,
     .name = "Audio",
     .title = "Audio Chain",
     .row = 2,
     .tint = {0.88, 0.95, 1.0},
     .file = &Constants::voicePrefsFile,
     .models = &Fields::voiceModels,
     .effort = &Fields::voiceEffort,
     .contextTokens = &Fields::voiceContextTokens,
     .topTargeted = &Fields::voiceTopTargeted,
     .showEffort = false,
     .keptWarm = false,
     .emptiedByReset = false,
     .hint = "Handles voice messages. Whisper transcribes speech-to-text; say converts replies "
             "back to audio."},
}};

// What a new chain needs is asked for here, where it would be missed.
constexpr bool isComplete(const ChainSection& section) {
    const auto isOfChain = [key = chainKey(section.list)](const auto& each) {
        return each.chain == key;
    };
    return !section.name.empty() && !section.title.empty() && !section.hint.empty() &&
           section.file != nullptr && section.models != nullptr && section.effort != nullptr &&
           section.contextTokens != nullptr && section.topTargeted != nullptr &&
           std::any_of(effortKeys.begin(), effortKeys.end(), isOfChain) &&
           std::any_of(contextKeys.begin(), contextKeys.end(), isOfChain);
}

// Each value has a field of its own: the same one in two rows would be saved for both.
template <class Member>
constexpr bool allDiffer(Member member) {
    for (const ChainSection& section : sections) {
        if (std::count_if(sections.begin(), sections.end(), [&](const ChainSection& other) {
                return other.*member == section.*member;
            }) != 1) {
            return false;
        }
    }
    return true;
}

static_assert(std::all_of(sections.begin(), sections.end(), isComplete), "a chain lacks something");
static_assert(allDiffer(&ChainSection::list), "a chain has no section, or two");
static_assert(allDiffer(&ChainSection::file) && allDiffer(&ChainSection::models) &&
                  allDiffer(&ChainSection::effort) && allDiffer(&ChainSection::contextTokens) &&
                  allDiffer(&ChainSection::topTargeted),
              "two chains share a value");

} // namespace

const std::array<ChainSection, chainCount>& chainSections() {
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
