#include "records/models.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/files.h"
#include "base/json.h"

namespace varnhold {

namespace {

constexpr std::array<std::pair<ThemeColor, std::string_view>, 10> themeColors{{
    {ThemeColor::purple, "purple"},
    {ThemeColor::blue, "blue"},
    {ThemeColor::green, "green"},
    {ThemeColor::orange, "orange"},
    {ThemeColor::cyan, "cyan"},
    {ThemeColor::red, "red"},
    {ThemeColor::teal, "teal"},
    {ThemeColor::indigo, "indigo"},
    {ThemeColor::pink, "pink"},
    {ThemeColor::yellow, "yellow"},
}};

Result<ModelLibrary> decodeLibraryObject(const json::Value& value) {
    json::ObjectReader in(value);
    ModelLibrary library{in.required("models", decodeModels)};
    return in.finish(std::move(library));
}

} // namespace

std::string_view name(ThemeColor color) {
    const auto* const found = std::find_if(themeColors.begin(), themeColors.end(),
                                           [&](const auto& each) { return each.first == color; });
    return found == themeColors.end() ? "indigo" : found->second;
}

ThemeColor AIModelItem::themeColor() const {
    const auto* const found = std::find_if(themeColors.begin(), themeColors.end(),
                                           [&](const auto& each) { return each.second == color; });
    return found == themeColors.end() ? ThemeColor::indigo : found->first;
}

Result<AIModelItem> decodeModel(const json::Value& value) {
    json::ObjectReader in(value);
    AIModelItem model{.uniqueId = in.optionalString("uniqueId"),
                      .id = in.string("id"),
                      .name = in.string("name"),
                      .family = in.string("family"),
                      .color = in.string("color"),
                      .type = in.optionalString("type"),
                      .provider_key = in.optionalString("provider_key")};
    return in.finish(std::move(model));
}

json::Value encode(const AIModelItem& model) {
    json::Value out = json::Value::object();
    json::setPresent(out, "uniqueId", model.uniqueId);
    out["id"] = model.id;
    out["name"] = model.name;
    out["family"] = model.family;
    out["color"] = model.color;
    json::setPresent(out, "type", model.type);
    json::setPresent(out, "provider_key", model.provider_key);
    return out;
}

Result<std::vector<AIModelItem>> decodeModels(const json::Value& value) {
    return json::decodeArray(value, decodeModel);
}

json::Value encode(const std::vector<AIModelItem>& models) {
    json::Value out = json::Value::array();
    for (const AIModelItem& model : models) {
        out.push_back(encode(model));
    }
    return out;
}

Result<std::vector<AIModelItem>> decodeChain(std::string_view text) {
    return json::parse(text).and_then(decodeModels);
}

std::string encodeChain(const std::vector<AIModelItem>& models) {
    return json::compact(encode(models));
}

Result<std::vector<AIModelItem>> readChain(const std::string& path) {
    return json::parseFile(path).and_then(decodeModels);
}

Result<ModelLibrary> decodeLibrary(std::string_view text) {
    return json::parse(text).and_then(decodeLibraryObject);
}

std::string encodeLibrary(const ModelLibrary& library) {
    json::Value out = json::Value::object();
    out["models"] = encode(library.models);
    return json::compact(out);
}

Result<ModelLibrary> readLibrary(const std::string& path) {
    return files::read(path).and_then(decodeLibrary);
}

} // namespace varnhold
