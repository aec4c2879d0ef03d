#include <gtest/gtest.h>

#include "launchctl/s6_scanner.h"
#include "support/temporary_home.h"

namespace varnhold::services {
namespace {

class Scanner : public ::testing::Test {
protected:
    Scanner() {
        EXPECT_TRUE(store.lock(*nameOfLabel({"job"})));
        EXPECT_TRUE(store.folder()->makeIn("scan"));
    }

    testing::TemporaryHome home;
    JobStore store = JobStore::open(home.at("run")).value();
};

TEST_F(Scanner, ThatIsNotInstalledIsToldOfByTheFailedStartItself) {
    const S6Scanner scanner(store, {home.at("missing"), home.at("missing too")});
    const auto started = scanner.start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), "s6-svscan can't be executed: No such file or directory; "
                               "is s6 installed?");
}

TEST_F(Scanner, ThatMayNotBeExecutedSaysWhy) {
    home.makeFolder(home.at("folder"));
    const S6Scanner scanner(store, {home.at("folder")});
    EXPECT_EQ(scanner.start().error(), "s6-svscan can't be executed: Permission denied");
}

} // namespace
} // namespace varnhold::services
