#include "platform/orphan_sweep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varnhold::platform {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Whom they kill is tested with real processes, in a sandbox.

TEST(MacOrphanSweep, IsThisTextToTheLetter) {
    EXPECT_EQ(macOrphanSweep(), "for cli in claude gemini qwen codex; do "
                                R"(ps -axo pid,ppid,command | awk -v c="opt/homebrew/bin/$cli" )"
                                R"('$2==1 && $0 ~ c {print $1}' | xargs -r kill -9 2>/dev/null; )"
                                "done");
}

TEST(LinuxOrphanSweep, LooksAtTheUsersOwnProcessesAlone) {
    EXPECT_THAT(linuxOrphanSweep(), HasSubstr("ps xo pid,"));
    EXPECT_THAT(linuxOrphanSweep(), Not(HasSubstr("ps -a")));
}

} // namespace
} // namespace varnhold::platform
