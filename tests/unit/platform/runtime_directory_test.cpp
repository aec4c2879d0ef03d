#include "platform/runtime_directory.h"

#include <gtest/gtest.h>

namespace varnhold::platform {
namespace {

constexpr std::uint32_t nobodysId = 4294967294; // no login manager ever made a folder for it

TEST(RuntimeDirectory, LiesBelowTheSessionsFolder) {
    EXPECT_EQ(runtimeDirectory("/run/user/1000", 1000), "/run/user/1000/varnhold");
    EXPECT_EQ(runtimeDirectory("/nonexistent/run", nobodysId), "/nonexistent/run/varnhold");
}

TEST(RuntimeDirectory, WithoutAnAbsoluteOneItBearsTheUsersId) {
    for (const char* variable : {static_cast<const char*>(nullptr), "", "run/user", "."}) {
        EXPECT_EQ(runtimeDirectory(variable, nobodysId), "/tmp/varnhold-4294967294");
    }
}

} // namespace
} // namespace varnhold::platform
