#include "records/assignments.h"

#include "base/files.h"
#include "base/json.h"

namespace varnhold {

namespace {

Result<ChainBotAssignments> decodeMap(const json::Value& value) {
    if (!value.is_object()) {
        return failure(std::string("expected an object, found ") + value.type_name());
    }
    ChainBotAssignments assignments;
    for (const auto& [key, member] : value.items()) {
        Result<std::vector<std::string>> labels = json::asStrings(member);
        if (!labels) {
            return failure(key + ": " + labels.error());
        }
        assignments[key] = *std::move(labels);
    }
    return assignments;
}

} // namespace

Result<ChainBotAssignments> decodeAssignments(std::string_view text) {
    return json::parse(text).and_then(decodeMap);
}

std::string encodeAssignments(const ChainBotAssignments& assignments) {
    return json::compact(assignments);
}

Result<ChainBotAssignments> readAssignments(const std::string& path) {
    return files::read(path).and_then(decodeAssignments);
}

} // namespace varnhold
