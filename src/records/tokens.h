#pragma once

#include <cstdint>
#include <span>
#include <string>

// Token budgets: as text, as whole numbers, and along the ladder that the steppers climb.
//
// Pure functions; any thread. A ladder is ascending and not empty.
namespace varnhold {

// For the chains: "Auto" for nothing, whole millions without a decimal ("2M", "1.5M", "8K", "999").
[[nodiscard]] std::string formatTokens(std::int64_t tokens);

// For the custom groups: always a decimal in millions ("2.0M"), and "0" for nothing.
[[nodiscard]] std::string formatTokenCount(std::int64_t tokens);

// Nearest whole number, halves away from zero; the fraction cut off. Beyond 64 bits both give the
// last number that fits, and 0 for what is no number.
[[nodiscard]] std::int64_t roundedTokens(double tokens);
[[nodiscard]] std::int64_t truncatedTokens(double tokens);

using Ladder = std::span<const int>;

[[nodiscard]] bool canStepLeft(Ladder ladder, std::int64_t tokens);
[[nodiscard]] bool canStepRight(Ladder ladder, std::int64_t tokens);

// The neighbouring entry in the direction pressed, also from between two entries; the end of the
// ladder where there is none.
[[nodiscard]] int stepLeft(Ladder ladder, std::int64_t tokens);
[[nodiscard]] int stepRight(Ladder ladder, std::int64_t tokens);

} // namespace varnhold
