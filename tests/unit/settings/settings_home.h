#pragma once

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_state.h"
#include "support/fake_platform.h"
#include "support/records.h"
#include "support/temporary_home.h"

namespace varnhold::testing {

// A data folder of its own and the settings state that works on it.
struct SettingsHome {
    TemporaryHome home;
    FakePlatform platform;
    Constants constants{home.path()};
    std::optional<ModelSelectorView> view;

    SettingsHome() {
        platform.home = home.path();
        platform.bundle = home.at("bundle");
        home.makeFolder(constants.appSupportDir);
    }

    ModelSelectorView& open() { return view.emplace(platform.interfaces, constants); }

    [[nodiscard]] std::string read(const std::string& path) const { return home.read(path); }
    void write(const std::string& path, std::string_view content) const {
        home.write(path, content);
    }

    // All files that a save writes, in the order of writing; the groups only if there are any.
    [[nodiscard]] std::vector<std::string> savedFiles() const {
        return {constants.workerPrefsFile,  constants.architectPrefsFile,
                constants.photoPrefsFile,   constants.videoPrefsFile,
                constants.voicePrefsFile,   constants.governorChainFile,
                constants.responseModeFile, constants.botsConfigFile,
                constants.customGroupsFile, constants.chainBotAssignmentsFile,
                constants.promptFile,       constants.authConfigFile,
                constants.effortPrefsFile,  constants.contextPrefsFile,
                constants.governorPrefsFile};
    }

    // How often everything was saved.
    [[nodiscard]] long saves() const {
        const auto& keys = platform.defaults.written;
        return std::count(keys.begin(), keys.end(), "api_key_cerebras");
    }

    [[nodiscard]] std::vector<BotConfig> botsOnDisk() const { return loadBots(constants); }
};

// Something in every field that is saved.
inline void fill(ModelSelectorView& view) {
    view.workerModels = {model("worker")};
    view.architectModels = {model("architect"), model("second")};
    view.photoModels = {model("photo")};
    view.videoModels = {model("video")};
    view.voiceModels = {model("voice")};
    view.governorModels = {model("governor")};
    view.architectResponseMode = ResponseMode::both;
    view.userBots.push_back(bot("ops"));
    view.customGroups = {CustomBotGroup{.name = "Crew", .models = {model("group")}}};
    view.chainBotAssignments = {{"worker", {"com.ostrelleai.ops.telegramd"}}};
    view.masterPrompt = "Be kind.\n";
    view.openaiKey = "key";
    view.videoEffort = EffortLevel::high;
    view.voiceContextTokens = 8000;
}

} // namespace varnhold::testing
