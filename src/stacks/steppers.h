#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "records/preferences.h"
#include "records/tokens.h"

// The two steppers of a stack: how much its models may reason, and how much they may read. Pure
// functions; any thread.
namespace varnhold {

enum class StepDirection { left, right };

// What a stepper shows.
struct StepperRow {
    std::string label;
    std::string valueText;
    bool isInactive = false;
    double valueWidth = 0; // points
    bool canGoLeft = false;
    bool canGoRight = false;

    bool operator==(const StepperRow&) const = default;
};

[[nodiscard]] StepperRow effortRow(EffortLevel level);
// The row of a budget; how the number reads, and when it counts as none, chains and groups say.
[[nodiscard]] StepperRow contextRow(std::int64_t tokens, Ladder ladder, std::string valueText,
                                    bool isInactive);

// The level beside this one; none at the end of the levels.
[[nodiscard]] std::optional<EffortLevel> neighbour(EffortLevel level, StepDirection direction);

// The next budget of the ladder in this direction, or its last one there.
[[nodiscard]] double nextBudget(double tokens, StepDirection direction, Ladder ladder);

} // namespace varnhold
