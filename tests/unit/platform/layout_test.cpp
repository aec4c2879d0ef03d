#include <gtest/gtest.h>
#include <string>

#include "platform/layout.h"

namespace varnhold::platform {
namespace {

TEST(MacLayout, AnExecutableInABundleBelongsToTheBundle) {
    EXPECT_EQ(macLayout("/Applications/Varnhold.app/Contents/MacOS/Varnhold"),
              (Layout{"/Applications/Varnhold.app", "/bin/launchctl"}));
}

TEST(MacLayout, OutsideABundleItsFolderStandsForOne) {
    EXPECT_EQ(macLayout("/somewhere/bin/Varnhold"), (Layout{"/somewhere/bin", "/bin/launchctl"}));
    EXPECT_EQ(macLayout("/a/Contents/MacOS/deeper/Varnhold").bundlePath,
              "/a/Contents/MacOS/deeper");
}

TEST(LinuxLayout, PiecesLieUnderThePrefixOfTheExecutable) {
    EXPECT_EQ(linuxLayout("/usr/bin/varnhold"),
              (Layout{"/usr/lib/varnhold", "/usr/libexec/varnhold/launchctl"}));
    EXPECT_EQ(
        linuxLayout("/opt/varnhold 7/bin/varnhold"),
        (Layout{"/opt/varnhold 7/lib/varnhold", "/opt/varnhold 7/libexec/varnhold/launchctl"}));
}

TEST(LinuxLayout, APrefixAtTheRootHasNoName) {
    EXPECT_EQ(linuxLayout("/bin/varnhold"),
              (Layout{"/lib/varnhold", "/libexec/varnhold/launchctl"}));
    EXPECT_EQ(linuxLayout("/libexec/varnhold/supervisor"), linuxLayout("/bin/varnhold"));
}

TEST(LinuxLayout, WhatIsStartedAndWhatItBecomesHaveTheSamePieces) {
    for (const std::string prefix : {"/usr", "/opt/varnhold 7", "/srv/libexec/varnhold"}) {
        const std::string started = prefix + "/bin/varnhold";
        EXPECT_EQ(supervisorBehind(started), prefix + "/libexec/varnhold/supervisor");
        EXPECT_EQ(linuxLayout(supervisorBehind(started)), linuxLayout(started));
    }
}

} // namespace
} // namespace varnhold::platform
