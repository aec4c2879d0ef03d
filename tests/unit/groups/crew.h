#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "groups/custom_groups_column.h"
#include "groups/group_sheet.h"
#include "shell/constants.h"
#include "support/fake_platform.h"
#include "support/records.h"

namespace varnhold::testing {

inline platform::PayloadProviders dropped(const std::string& text) {
    return {platform::textPayload(text)};
}

// Groups, the sheet and the column over them, and what they announced.
struct Crew {
    FakePlatform platform;
    Constants constants{"/home/somebody"};
    std::vector<CustomBotGroup> groups;
    std::vector<AIModelItem> library;
    std::vector<BotConfig> bots;
    std::string input;
    int saves = 0;
    int changes = 0;
    int clears = 0;
    int dismissals = 0;
    std::optional<CustomGroupsColumn> column;
    ManageCustomGroupsSheet sheet{.customGroups = groups,
                                  .newGroupNameInput = input,
                                  .onSave = [this] { ++saves; },
                                  .onDismiss = [this] { ++dismissals; }};

    Crew() {
        column.emplace(GroupColumnParts{.queues = platform.interfaces.queues,
                                        .contextLadder = constants.contextLadder,
                                        .customGroups = groups,
                                        .modelLibrary = library,
                                        .userBots = bots,
                                        .onSave = [this] { ++saves; },
                                        .onClearDragging = [this] { ++clears; },
                                        .onChange = [this] { ++changes; }});
    }

    // A group with these models; the reference holds until the next one is made.
    CustomBotGroup& make(const std::vector<std::string>& uids = {}) {
        CustomBotGroup& group = groups.emplace_back(CustomBotGroup{.name = "Crew"});
        for (const std::string& uid : uids) {
            group.models.push_back(model("id-" + uid, uid));
        }
        return group;
    }

    [[nodiscard]] static std::vector<std::string> uids(const CustomBotGroup& group) {
        std::vector<std::string> all;
        for (const AIModelItem& model : group.models) {
            all.push_back(model.uid());
        }
        return all;
    }

    static CustomBotGroup withBudget(double tokens) {
        return {.name = "Crew", .contextTokens = tokens};
    }
};

} // namespace varnhold::testing
