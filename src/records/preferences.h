#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

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

// Where a chain's effort is kept; some must be there, and some may be absent.
using EffortField =
    std::variant<std::string EffortPrefs::*, std::optional<std::string> EffortPrefs::*>;

struct EffortKey {
    std::string_view chain;
    EffortField field;
};

// The chains in the order of the file.
inline constexpr std::array<EffortKey, 6> effortKeys{{{"architect", &EffortPrefs::architect},
                                                      {"worker", &EffortPrefs::worker},
                                                      {"photo", &EffortPrefs::photo},
                                                      {"video", &EffortPrefs::video},
                                                      {"voice", &EffortPrefs::voice},
                                                      {"governor", &EffortPrefs::governor}}};

// By a chain's key. None, and nothing done, for a key that no chain has.
[[nodiscard]] std::optional<std::string> effortOf(const EffortPrefs& prefs, std::string_view chain);
void setEffort(EffortPrefs& prefs, std::string_view chain, std::string_view raw);

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

struct ContextKey {
    std::string_view chain;
    std::optional<std::int64_t> ContextPrefs::*field;
};

// The chains in the order of the file.
inline constexpr std::array<ContextKey, 6> contextKeys{{{"architect", &ContextPrefs::architect},
                                                        {"worker", &ContextPrefs::worker},
                                                        {"photo", &ContextPrefs::photo},
                                                        {"video", &ContextPrefs::video},
                                                        {"voice", &ContextPrefs::voice},
                                                        {"governor", &ContextPrefs::governor}}};

// By a chain's key. None, and nothing done, for a key that no chain has.
[[nodiscard]] std::optional<std::int64_t> budgetOf(const ContextPrefs& prefs,
                                                   std::string_view chain);
void setBudget(ContextPrefs& prefs, std::string_view chain, std::int64_t tokens);

[[nodiscard]] Result<ContextPrefs> decodeContextPrefs(std::string_view text);
[[nodiscard]] std::string encodeContextPrefs(const ContextPrefs& prefs);
[[nodiscard]] Result<ContextPrefs> readContextPrefs(const std::string& path);

} // namespace varnhold
