#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/result.h"

// The one model and provider that the governor prefers, kept under "governor" in the file
// .preferred-provider.json. Others keep their own keys in that file, and all of those survive.
//
// Pure functions on values; any thread.
namespace varnhold {

struct GovernorChoice {
    std::optional<std::string> provider = std::nullopt;
    std::optional<std::string> model = std::nullopt;

    bool operator==(const GovernorChoice&) const = default;
};

// Each of the two on its own: one that is missing or isn't text is absent. Refuses a document that
// isn't an object, or whose "governor" isn't one.
[[nodiscard]] Result<GovernorChoice> decodeGovernorChoice(std::string_view text);
[[nodiscard]] Result<GovernorChoice> readGovernorChoice(const std::string& path);

// The file's next content: what it held, with "governor" replaced as a whole. A file that was no
// JSON object leaves nothing behind. Spread over lines, two blanks per level.
[[nodiscard]] std::string withGovernorChoice(const Result<std::string>& content,
                                             const std::string& provider, const std::string& model,
                                             const std::string& setAt);

} // namespace varnhold
