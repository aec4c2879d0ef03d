#include "app/activation.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace varnhold::testing {
namespace {

TEST(ActivationTest, ArrivesAsItWasHandedOver) {
    for (const auto& right : {Activation{}, Activation{.token = "a", .startupId = ""},
                              Activation{.token = "", .startupId = "b_TIME1"},
                              Activation{.token = "a", .startupId = "b_TIME1"}}) {
        EXPECT_EQ(Activation::fromText(right.asText()), right) << right.asText();
    }
}

TEST(ActivationTest, IsLeftToNobodyElse) {
    ::setenv("XDG_ACTIVATION_TOKEN", "a", 1);
    ::setenv("DESKTOP_STARTUP_ID", "b", 1);
    EXPECT_EQ(givenActivation(), (Activation{.token = "a", .startupId = "b"}));
    EXPECT_EQ(takeActivation(), (Activation{.token = "a", .startupId = "b"}));
    EXPECT_EQ(std::getenv("XDG_ACTIVATION_TOKEN"), nullptr);
    EXPECT_EQ(std::getenv("DESKTOP_STARTUP_ID"), nullptr);
    EXPECT_EQ(takeActivation(), Activation{});
}

} // namespace
} // namespace varnhold::testing
