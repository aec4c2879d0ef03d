#include "stacks/steppers.h"

#include <algorithm>
#include <utility>

namespace varnhold {

namespace {

constexpr double effortWidth = 36;
constexpr double contextWidth = 50;

std::size_t indexOf(EffortLevel level) {
    const auto found = std::find(allEffortLevels.begin(), allEffortLevels.end(), level);
    return static_cast<std::size_t>(found - allEffortLevels.begin());
}

} // namespace

StepperRow effortRow(EffortLevel level) {
    return {.label = "Effort",
            .valueText = std::string(label(level)),
            .isInactive = level == EffortLevel::off,
            .valueWidth = effortWidth,
            .canGoLeft = neighbour(level, StepDirection::left).has_value(),
            .canGoRight = neighbour(level, StepDirection::right).has_value()};
}

StepperRow contextRow(std::int64_t tokens, Ladder ladder, std::string valueText, bool isInactive) {
    return {.label = "Context",
            .valueText = std::move(valueText),
            .isInactive = isInactive,
            .valueWidth = contextWidth,
            .canGoLeft = canStepLeft(ladder, tokens),
            .canGoRight = canStepRight(ladder, tokens)};
}

std::optional<EffortLevel> neighbour(EffortLevel level, StepDirection direction) {
    const std::size_t index = indexOf(level);
    if (direction == StepDirection::left) {
        return index > 0 ? std::optional(allEffortLevels[index - 1]) : std::nullopt;
    }
    return index + 1 < allEffortLevels.size() ? std::optional(allEffortLevels[index + 1])
                                              : std::nullopt;
}

double nextBudget(double tokens, StepDirection direction, Ladder ladder) {
    const std::int64_t whole = truncatedTokens(tokens);
    return direction == StepDirection::left ? stepLeft(ladder, whole) : stepRight(ladder, whole);
}

} // namespace varnhold
