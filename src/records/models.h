#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/hash.h"
#include "base/json_fwd.h"
#include "base/result.h"

// The record that names an AI model: a row of the library, an entry of a failover chain or of a
// custom group. The daemons read the same JSON object out of the chain files.
//
// Values only; any thread. A decoder refuses the whole file for one bad record and says why.
namespace varnhold {

// The colour of a model's chip; the theme says what each looks like.
enum class ThemeColor { purple, blue, green, orange, cyan, red, teal, indigo, pink, yellow };

[[nodiscard]] std::string_view name(ThemeColor color);

struct AIModelItem {
    // Tells rows apart where one model can stand twice; present and empty counts as present.
    std::optional<std::string> uniqueId = std::nullopt;
    std::string id; // what the daemons know the model by; also the identity for lists
    std::string name;
    std::string family;
    std::string color;
    std::optional<std::string> type = std::nullopt; // "cli", "api" or "local" in this program
    // Spelled as the daemons spell it.
    std::optional<std::string> provider_key = std::nullopt;

    [[nodiscard]] const std::string& uid() const { return uniqueId ? *uniqueId : id; }
    [[nodiscard]] const std::string& displayName() const { return name; }
    // By the exact name of the colour; anything else is indigo.
    [[nodiscard]] ThemeColor themeColor() const;

    bool operator==(const AIModelItem&) const = default;
};

[[nodiscard]] Result<AIModelItem> decodeModel(const json::Value& value);
[[nodiscard]] json::Value encode(const AIModelItem& model);

// A list as it stands in a chain file: an array without a wrapper, first choice first.
[[nodiscard]] Result<std::vector<AIModelItem>> decodeModels(const json::Value& value);
[[nodiscard]] json::Value encode(const std::vector<AIModelItem>& models);
[[nodiscard]] Result<std::vector<AIModelItem>> decodeChain(std::string_view text);
[[nodiscard]] std::string encodeChain(const std::vector<AIModelItem>& models);
[[nodiscard]] Result<std::vector<AIModelItem>> readChain(const std::string& path);

// model_library.json.
struct ModelLibrary {
    std::vector<AIModelItem> models;

    bool operator==(const ModelLibrary&) const = default;
};

[[nodiscard]] Result<ModelLibrary> decodeLibrary(std::string_view text);
[[nodiscard]] std::string encodeLibrary(const ModelLibrary& library);
[[nodiscard]] Result<ModelLibrary> readLibrary(const std::string& path);

} // namespace varnhold

template <>
struct std::hash<varnhold::AIModelItem> {
    std::size_t operator()(const varnhold::AIModelItem& model) const noexcept {
        return varnhold::hashOf(model.uniqueId, model.id, model.name, model.family, model.color,
                                model.type, model.provider_key);
    }
};
