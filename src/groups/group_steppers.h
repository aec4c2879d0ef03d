#pragma once

#include <optional>
#include <span>
#include <string>

#include "records/groups.h"

// The two steppers of a group: effort and context budget. Pure functions on one record. The effort
// of a chain climbs the same levels.
namespace varnhold {

enum class StepDirection { left, right };

// What a stepper shows.
struct GroupStepperRow {
    std::string label;
    std::string valueText;
    bool isInactive = false;
    double valueWidth = 0; // points
    bool canGoLeft = false;
    bool canGoRight = false;

    bool operator==(const GroupStepperRow&) const = default;
};

[[nodiscard]] GroupStepperRow effortRow(EffortLevel level);
[[nodiscard]] GroupStepperRow effortRow(const CustomBotGroup& group);
// `ladder`: the budgets that can be reached, rising, at least one.
[[nodiscard]] GroupStepperRow contextRow(const CustomBotGroup& group, std::span<const int> ladder);

// The level beside this one; none at the end of the levels.
[[nodiscard]] std::optional<EffortLevel> neighbour(EffortLevel level, StepDirection direction);

// One level up or down. False at the end of the levels: nothing has changed.
[[nodiscard]] bool stepEffort(CustomBotGroup& group, StepDirection direction);

// To the next budget of the ladder in this direction, or its last one there; always a change worth
// saving, even where the value stays.
void stepContext(CustomBotGroup& group, StepDirection direction, std::span<const int> ladder);

} // namespace varnhold
