#pragma once

#include <string>
#include <vector>

#include "settings/settings_fields.h"
#include "settings/target_list.h"
#include "shell/constants.h"

namespace varnhold {

// Where the parts of one chain are kept.
struct ChainParts {
    std::vector<AIModelItem> SettingsFields::*models;
    std::string Constants::*file;
};

[[nodiscard]] constexpr ChainParts partsOf(TargetList list) {
    switch (list) {
    case TargetList::architect:
        return {&SettingsFields::architectModels, &Constants::architectPrefsFile};
    case TargetList::worker:
        return {&SettingsFields::workerModels, &Constants::workerPrefsFile};
    case TargetList::photo:
        return {&SettingsFields::photoModels, &Constants::photoPrefsFile};
    case TargetList::video:
        return {&SettingsFields::videoModels, &Constants::videoPrefsFile};
    case TargetList::voice:
        return {&SettingsFields::voiceModels, &Constants::voicePrefsFile};
    case TargetList::governor:
        break;
    }
    return {&SettingsFields::governorModels, &Constants::governorChainFile};
}

// The order in which chain files are read at the start and written by each save.
inline constexpr std::array chainFileOrder{TargetList::worker, TargetList::architect,
                                           TargetList::photo,  TargetList::video,
                                           TargetList::voice,  TargetList::governor};

} // namespace varnhold
