#include "records/governor_choice.h"

#include "base/json.h"

namespace varnhold {

namespace {

constexpr int indentation = 2;

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
    return json::parseFile(path).and_then(decodeChoice);
}

std::string withGovernorChoice(const Result<std::string>& content, const std::string& provider,
                               const std::string& model, const std::string& setAt) {
    json::Value document = json::Value::object();
    if (content) {
        if (Result<json::Value> found = json::parse(*content); found && found->is_object()) {
            document = *std::move(found);
        }
    }
    json::Value governor = json::Value::object();
    governor["provider"] = provider;
    governor["model"] = model;
    governor["set_at"] = setAt;
    document["governor"] = std::move(governor);
    return document.dump(indentation, ' ', false, json::Value::error_handler_t::replace);
}

} // namespace varnhold
