#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/json_fwd.h"
#include "base/result.h"

// How much each chain may reason, how much it may read, and how the architect chain answers.
//
// Three small files hold them: effort_preferences.json, context_preferences.json and
// response_mode.json. Values only; any thread. A decoder refuses the whole file for one bad field.
namespace varnhold {

enum class EffortLevel { off, low, medium, high };

inline constexpr std::array allEffortLevels{EffortLevel::off, EffortLevel::low, EffortLevel::medium,
                                            EffortLevel::high};

// "off", "low", "medium" or "high", to the letter, in both directions.
[[nodiscard]] std::string_view rawValue(EffortLevel level);
[[nodiscard]] std::optional<EffortLevel> effortLevelFromRawValue(std::string_view raw);
[[nodiscard]] Result<EffortLevel> decodeEffortLevel(const json::Value& value);

[[nodiscard]] std::string_view label(EffortLevel level);
[[nodiscard]] double sliderValue(EffortLevel level);
// Rounds, halves away from zero; whatever isn't 0, 1 or 2 then is high, also below 0. Handing in
// a value that isn't finite is the caller's mistake.
[[nodiscard]] EffortLevel effortLevelFromSlider(double slider);

enum class ResponseMode { text, voice, both };

inline constexpr std::array allResponseModes{ResponseMode::text, ResponseMode::voice,
                                             ResponseMode::both};

[[nodiscard]] std::string_view rawValue(ResponseMode mode);
[[nodiscard]] std::optional<ResponseMode> responseModeFromRawValue(std::string_view raw);
[[nodiscard]] std::string_view label(ResponseMode mode);

// The file is one JSON string and nothing else.
[[nodiscard]] Result<ResponseMode> decodeResponseMode(std::string_view text);
[[nodiscard]] std::string encodeResponseMode(ResponseMode mode);
[[nodiscard]] Result<ResponseMode> readResponseMode(const std::string& path);

// Raw values of effort levels as the file has them; an unknown one is its reader's affair.
struct EffortPrefs {
    std::string architect;
    std::string worker;
    std::optional<std::string> photo = std::nullopt;
    std::optional<std::string> video = std::nullopt;
    std::optional<std::string> voice = std::nullopt;
    std::optional<std::string> governor = std::nullopt;

    bool operator==(const EffortPrefs&) const = default;
};

[[nodiscard]] Result<EffortPrefs> decodeEffortPrefs(std::string_view text);
[[nodiscard]] std::string encodeEffortPrefs(const EffortPrefs& prefs);
[[nodiscard]] Result<EffortPrefs> readEffortPrefs(const std::string& path);

// Budgets in tokens; 0 leaves the choice to the chain's model.
struct ContextPrefs {
    std::optional<std::int64_t> architect = std::nullopt;
    std::optional<std::int64_t> worker = std::nullopt;
    std::optional<std::int64_t> photo = std::nullopt;
    std::optional<std::int64_t> video = std::nullopt;
    std::optional<std::int64_t> voice = std::nullopt;
    std::optional<std::int64_t> governor = std::nullopt;

    bool operator==(const ContextPrefs&) const = default;
};

[[nodiscard]] Result<ContextPrefs> decodeContextPrefs(std::string_view text);
[[nodiscard]] std::string encodeContextPrefs(const ContextPrefs& prefs);
[[nodiscard]] Result<ContextPrefs> readContextPrefs(const std::string& path);

} // namespace varnhold
