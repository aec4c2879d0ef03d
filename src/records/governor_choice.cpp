#include "records/governor_choice.h"

#include <algorithm>
#include <vector>

#include "base/files.h"
#include "base/json.h"
#include "base/json_text.h"

namespace varnhold {

namespace {

constexpr std::string_view governorKey = "\"governor\"";

bool isObject(const std::string& text) {
    const Result<json::Value> document = json::parse(text);
    return document && document->is_object();
}

bool isGovernor(const json::TextMember& member) {
    return json::parse(member.key) == json::parse(governorKey); // either may have escapes
}

std::optional<std::string> textUnder(const json::Value& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? std::optional(found->get<std::string>())
                                                       : std::nullopt;
}

Result<GovernorChoice> decodeChoice(const json::Value& document) {
    if (!document.is_object()) {
        return failure(std::string("expected an object, found ") + document.type_name());
    }
    const auto governor = document.find("governor");
    if (governor == document.end()) {
        return GovernorChoice{};
    }
    if (!governor->is_object()) {
        return failure(std::string("governor: expected an object, found ") + governor->type_name());
    }
    return GovernorChoice{textUnder(*governor, "provider"), textUnder(*governor, "model")};
}

} // namespace

Result<GovernorChoice> decodeGovernorChoice(std::string_view text) {
    return json::parse(text).and_then(decodeChoice);
}

Result<GovernorChoice> readGovernorChoice(const std::string& path) {
    return files::read(path).and_then(decodeGovernorChoice);
}

std::string withGovernorChoice(const Result<std::string>& content, const std::string& provider,
                               const std::string& model, const std::string& setAt) {
    json::Value governor = json::Value::object();
    governor["provider"] = provider;
    governor["model"] = model;
    governor["set_at"] = setAt;
    const std::string choice = json::compact(governor);

    std::vector<json::TextMember> members;
    if (content && isObject(*content)) {
        members = json::textMembers(*content);
    }
    const auto mine = std::find_if(members.begin(), members.end(), isGovernor);
    if (mine == members.end()) {
        members.push_back({governorKey, choice});
    } else {
        mine->value = choice;
        members.erase(std::remove_if(mine + 1, members.end(), isGovernor), members.end());
    }
    std::string out = "{";
    for (const json::TextMember& member : members) {
        out += out.size() > 1 ? ",\n  " : "\n  ";
        out += std::string(member.key) + ": " + json::spread(member.value, 1);
    }
    return out + "\n}";
}

} // namespace varnhold
