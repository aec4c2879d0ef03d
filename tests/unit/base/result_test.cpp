#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/result.h"

namespace varnhold {
namespace {

TEST(Result, AFailureCarriesItsReason) {
    const Result<int> result = failure("no such thing");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), "no such thing");
}

TEST(Result, ValueOrEmptyGivesTheValueOrNothing) {
    EXPECT_EQ(valueOrEmpty(Result<std::string>("x")), "x");
    EXPECT_EQ(valueOrEmpty(Result<std::string>(failure("reason"))), "");
    EXPECT_TRUE(valueOrEmpty(Result<std::vector<int>>(failure("reason"))).empty());
}

} // namespace
} // namespace varnhold
