#include "groups/group_steppers.h"

#include <algorithm>
#include <cstdint>

#include "records/tokens.h"

namespace varnhold {

namespace {

constexpr double effortWidth = 36;
constexpr double contextWidth = 50;

std::size_t indexOf(EffortLevel level) {
    const auto found = std::find(allEffortLevels.begin(), allEffortLevels.end(), level);
    return static_cast<std::size_t>(found - allEffortLevels.begin());
}

} // namespace

GroupStepperRow effortRow(EffortLevel level) {
    return {.label = "Effort",
            .valueText = std::string(label(level)),
            .isInactive = level == EffortLevel::off,
            .valueWidth = effortWidth,
            .canGoLeft = neighbour(level, StepDirection::left).has_value(),
            .canGoRight = neighbour(level, StepDirection::right).has_value()};
}

GroupStepperRow effortRow(const CustomBotGroup& group) {
    return effortRow(group.effortLevel);
}

GroupStepperRow contextRow(const CustomBotGroup& group, std::span<const int> ladder) {
    const std::int64_t tokens = truncatedTokens(group.contextTokens);
    return {.label = "Context",
            .valueText = tokens == 0 ? "Auto" : formatTokenCount(tokens),
            .isInactive = tokens == 0,
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

bool stepEffort(CustomBotGroup& group, StepDirection direction) {
    const auto level = neighbour(group.effortLevel, direction);
    if (level) {
        group.effortLevel = *level;
    }
    return level.has_value();
}

void stepContext(CustomBotGroup& group, StepDirection direction, std::span<const int> ladder) {
    const std::int64_t tokens = truncatedTokens(group.contextTokens);
    group.contextTokens =
        direction == StepDirection::left ? stepLeft(ladder, tokens) : stepRight(ladder, tokens);
}

} // namespace varnhold
