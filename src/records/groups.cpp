#include "records/groups.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "base/files.h"
#include "base/json.h"

namespace varnhold {

namespace {

constexpr std::array pastels{"FFD6D6", "FFE8CC", "FFFACC", "D6FFD6", "CCF0FF",
                             "E8D6FF", "FFD6F5", "D6F5E8", "F5D6FF", "D6E8FF"};

constexpr Color gray{0.94, 0.94, 0.94};

bool isHexDigit(char sign) {
    return (sign >= '0' && sign <= '9') || (sign >= 'a' && sign <= 'f') ||
           (sign >= 'A' && sign <= 'F');
}

Result<Uuid> decodeUuid(const json::Value& value) {
    return json::asString(value).and_then([](const std::string& text) -> Result<Uuid> {
        if (const auto id = Uuid::parse(text)) {
            return *id;
        }
        return failure("no UUID: \"" + text + "\"");
    });
}

Result<std::vector<CustomBotGroup>> decodeList(const json::Value& value) {
    return json::decodeArray(value, decodeGroup);
}

} // namespace

std::string CustomBotGroup::randomPastelHex() {
    std::random_device source;
    std::uniform_int_distribution<std::size_t> anyPastel(0, pastels.size() - 1);
    return pastels[anyPastel(source)];
}

Color CustomBotGroup::pastelColor() const {
    constexpr std::size_t digits = 6;
    if (colorHex.size() != digits || !std::all_of(colorHex.begin(), colorHex.end(), isHexDigit)) {
        return gray;
    }
    const unsigned long packed = std::stoul(colorHex, nullptr, 16);
    const auto component = [packed](unsigned shift) {
        return static_cast<double>((packed >> shift) & 0xFFU) / 255.0;
    };
    return {component(16), component(8), component(0)};
}

Result<CustomBotGroup> decodeGroup(const json::Value& value) {
    json::ObjectReader in(value);
    CustomBotGroup group{.id = in.required("id", decodeUuid),
                         .name = in.string("name"),
                         .models = in.required("models", decodeModels),
                         .effortLevel = in.required("effortLevel", decodeEffortLevel),
                         .contextTokens = in.required("contextTokens", json::asDouble),
                         .colorHex = in.string("colorHex"),
                         .attachedPaths = in.required("attachedPaths", json::asStrings),
                         .objectives = in.string("objectives"),
                         .doctrine = in.required("doctrine", json::asStrings),
                         .assignedBotLabels = in.required("assignedBotLabels", json::asStrings)};
    return in.finish(std::move(group));
}

json::Value encode(const CustomBotGroup& group) {
    json::Value out = json::Value::object();
    out["id"] = group.id.text();
    out["name"] = group.name;
    out["models"] = encode(group.models);
    out["effortLevel"] = rawValue(group.effortLevel);
    out["contextTokens"] = json::number(group.contextTokens);
    out["colorHex"] = group.colorHex;
    out["attachedPaths"] = group.attachedPaths;
    out["objectives"] = group.objectives;
    out["doctrine"] = group.doctrine;
    out["assignedBotLabels"] = group.assignedBotLabels;
    return out;
}

Result<std::vector<CustomBotGroup>> decodeGroups(std::string_view text) {
    return json::parse(text).and_then(decodeList);
}

Result<std::string> encodeGroups(const std::vector<CustomBotGroup>& groups) {
    json::Value out = json::Value::array();
    for (const CustomBotGroup& group : groups) {
        if (!std::isfinite(group.contextTokens)) {
            return failure("the budget of \"" + group.name + "\" is no finite number");
        }
        out.push_back(encode(group));
    }
    return json::compact(out);
}

Result<std::vector<CustomBotGroup>> readGroups(const std::string& path) {
    return files::read(path).and_then(decodeGroups);
}

} // namespace varnhold
