#include "crew.h"

#include <limits>
#include <string>
#include <vector>

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

struct Steppers : Crew {
    double stepped(double from, StepDirection direction) {
        groups = {withBudget(from)};
        column->stack(groups[0].id).stepContext(direction);
        return groups[0].contextTokens;
    }
    [[nodiscard]] GroupStepperRow row(double tokens) const {
        return groupContextRow(tokens, constants.contextLadder);
    }
};

TEST(ContextStepper, AtZeroShowsAutoAndGoesRightTo8000Alone) {
    Steppers steppers;
    EXPECT_EQ(steppers.row(0), (GroupStepperRow{.label = "Context",
                                                .valueText = "Auto",
                                                .isInactive = true,
                                                .valueWidth = 50,
                                                .canGoLeft = false,
                                                .canGoRight = true}));
    EXPECT_EQ(steppers.stepped(0, StepDirection::right), 8000);
    EXPECT_EQ(steppers.saves, 1);
}

TEST(ContextStepper, AtTwoMillionCannotGoRight) {
    Steppers steppers;
    const GroupStepperRow row = steppers.row(2000000);
    EXPECT_FALSE(row.canGoRight);
    EXPECT_TRUE(row.canGoLeft);
    EXPECT_EQ(row.valueText, "2.0M");
    EXPECT_EQ(steppers.stepped(2000000, StepDirection::right), 2000000);
}

TEST(ContextStepper, BetweenTwoStepsGoesToTheNearestInTheDirectionPressed) {
    Steppers steppers;
    EXPECT_EQ(steppers.stepped(50000, StepDirection::left), 32000);
    EXPECT_EQ(steppers.stepped(50000, StepDirection::right), 64000);
    EXPECT_EQ(steppers.row(50000).valueText, "50K");
}

TEST(ContextStepper, CutsTheFractionOff) {
    Steppers steppers;
    EXPECT_EQ(steppers.row(0.9).valueText, "Auto");
    EXPECT_FALSE(steppers.row(0.9).canGoLeft);
    EXPECT_EQ(steppers.stepped(8000.9, StepDirection::right), 16000);
    EXPECT_EQ(steppers.stepped(8000.9, StepDirection::left), 0);
}

TEST(ContextStepper, ComesBackToTheLadderFromBeyondItsEnds) {
    Steppers steppers;
    EXPECT_EQ(steppers.stepped(-5, StepDirection::left), 0);
    EXPECT_EQ(steppers.stepped(-5, StepDirection::right), 0);
    EXPECT_EQ(steppers.stepped(3000000, StepDirection::left), 2000000);
    EXPECT_EQ(steppers.stepped(3000000, StepDirection::right), 2000000);
}

TEST(ContextStepper, SurvivesBudgetsThatNoIntegerCanHold) {
    Steppers steppers;
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(steppers.stepped(1e300, StepDirection::left), 2000000);
    EXPECT_EQ(steppers.stepped(-infinity, StepDirection::right), 0);
    EXPECT_EQ(steppers.stepped(std::numeric_limits<double>::quiet_NaN(), StepDirection::right),
              8000);
    EXPECT_FALSE(steppers.row(infinity).canGoRight);
}

TEST(ContextStepper, WalksTheWholeLadderUpAndDown) {
    Steppers steppers;
    double tokens = 0;
    for (const int step : steppers.constants.contextLadder) {
        EXPECT_EQ(tokens, step);
        tokens = steppers.stepped(tokens, StepDirection::right);
    }
    for (int i = 0; i < 9; ++i) {
        tokens = steppers.stepped(tokens, StepDirection::left);
    }
    EXPECT_EQ(tokens, 0);
}

TEST(EffortStepper, WalksTheLevelsAndStopsAtTheEndsWithoutASave) {
    Crew crew;
    const Uuid id = crew.make().id;
    std::vector<std::string> shown;
    for (int i = 0; i < 5; ++i) {
        const GroupStepperRow row = crew.column->stack(id).effortRow();
        shown.push_back(row.valueText + (row.canGoLeft ? " <" : "") + (row.canGoRight ? " >" : "") +
                        (row.isInactive ? " inactive" : ""));
        crew.column->stack(id).stepEffort(StepDirection::right);
    }
    const auto text = [](EffortLevel level) { return std::string(label(level)); };
    EXPECT_THAT(shown,
                ElementsAre(text(EffortLevel::off) + " > inactive", text(EffortLevel::low) + " < >",
                            text(EffortLevel::medium) + " < >", text(EffortLevel::high) + " <",
                            text(EffortLevel::high) + " <"));
    EXPECT_EQ(crew.saves, 3);
    for (int i = 0; i < 5; ++i) {
        crew.column->stack(id).stepEffort(StepDirection::left);
    }
    EXPECT_EQ(crew.groups[0].effortLevel, EffortLevel::off);
    EXPECT_EQ(crew.saves, 6);
    EXPECT_EQ(crew.column->stack(id).effortRow().valueWidth, 36);
    EXPECT_EQ(crew.column->stack(id).effortRow().label, "Effort");
}

TEST(Steppers, OfAGroupThatHasGoneDoNothing) {
    Crew crew;
    crew.column->stack(Uuid::random()).stepEffort(StepDirection::right);
    crew.column->stack(Uuid::random()).stepContext(StepDirection::right);
    EXPECT_EQ(crew.saves, 0);
}

} // namespace
} // namespace varnhold::testing
