#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/json_fwd.h"

// Keys and tokens, and their absence from everything that is printed.
//
// What is known to be secret, from files and environments, is masked wherever it turns up; what
// only looks like it is masked as well, in logs more eagerly than elsewhere. Any thread, after the
// last secret was added.
namespace varnhold::doctor {

// What stands in a secret's place.
inline constexpr std::string_view maskText = "••••";

// Whether a field or variable of this name holds a secret: "anthropicKey", "TELEGRAM_BOT_TOKEN".
[[nodiscard]] bool isSecretName(std::string_view name);

class Secrets final {
public:
    // Very short values aren't masked: they would take half of every text along.
    void add(std::string_view value);
    void addVariable(std::string_view name, std::string_view value);

    // Values of all fields with such names. Takes a text that is no JSON too, and then what can be
    // made out in it.
    void addFromJson(std::string_view text);

    [[nodiscard]] std::string mask(std::string_view text) const;
    // The line of a log: also what stands behind names of secrets, and what is long and random.
    [[nodiscard]] std::string maskLogLine(std::string_view line) const;
    // Every text in it, keys included.
    [[nodiscard]] json::Value mask(const json::Value& value) const;

private:
    void addAllIn(const json::Value& value, bool isSecret);
    void addFromBrokenJson(std::string_view text);
    [[nodiscard]] std::size_t lengthOfSecretAt(std::string_view text, std::size_t at) const;

    // By their first bytes, so that a thousand of them cost no more than one.
    std::unordered_map<std::uint64_t, std::vector<std::string>> secrets_;
};

} // namespace varnhold::doctor
