#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/json_fwd.h"
#include "base/result.h"
#include "base/uuid.h"
#include "records/models.h"
#include "records/preferences.h"

// Groups of bots with models, effort, budget and reference material of their own, and
// custom_groups.json, the list of them.
//
// Values only; any thread. A decoder refuses the whole file for one group that lacks anything.
namespace varnhold {

// Components from 0 to 1 in the sRGB space, fully opaque.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const Color&) const = default;
};

struct CustomBotGroup {
    // One of ten light colours, each equally likely; nothing avoids one that is in use.
    [[nodiscard]] static std::string randomPastelHex();

    Uuid id = Uuid::random();
    std::string name;
    std::vector<AIModelItem> models = {}; // in failover order
    EffortLevel effortLevel = EffortLevel::off;
    double contextTokens = 0; // 0 leaves the choice to the model
    std::string colorHex = randomPastelHex();
    std::vector<std::string> attachedPaths = {};
    std::string objectives = {};
    std::vector<std::string> doctrine = {};
    std::vector<std::string> assignedBotLabels = {};

    // The colour for drawing: gray where `colorHex` isn't exactly six hexadecimal digits.
    [[nodiscard]] Color pastelColor() const;

    bool operator==(const CustomBotGroup&) const = default;
};

[[nodiscard]] Result<CustomBotGroup> decodeGroup(const json::Value& value);
[[nodiscard]] json::Value encode(const CustomBotGroup& group);

// Size of "[]": a file of no more bytes has nothing in it worth keeping.
inline constexpr std::size_t emptyGroupsFileSize = 2;

[[nodiscard]] Result<std::vector<CustomBotGroup>> decodeGroups(std::string_view text);

// Fails for a budget that is no finite number: JSON has no text for it.
[[nodiscard]] Result<std::string> encodeGroups(const std::vector<CustomBotGroup>& groups);

[[nodiscard]] Result<std::vector<CustomBotGroup>> readGroups(const std::string& path);

} // namespace varnhold
