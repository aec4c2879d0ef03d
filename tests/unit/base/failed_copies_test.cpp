#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>

#include "base/files.h"
#include "failing_disk.h"
#include "support/temporary_home.h"

// A copy is there as a whole or not at all, and can be tried again.
namespace varnhold::files {
namespace {

namespace fs = std::filesystem;
using testing::FailingDisk;
using testing::TemporaryHome;

std::size_t entries(const std::string& folder) {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

class FailedCopy : public ::testing::Test {
protected:
    FailedCopy() {
        home.write(home.at("from/file"), content);
        home.write(home.at("from/tree/a/deep"), content);
        home.write(home.at("from/tree/b"), "b");
        home.makeFolder(home.at("to"));
    }

    const TemporaryHome home;
    const std::string content = std::string(100000, 'x');
};

TEST_F(FailedCopy, LeavesNothingWhicheverCallFails) {
    for (const std::string name : {"file", "tree"}) {
        int failed = 0;
        for (int call = 0;; ++call) {
            FailingDisk disk;
            disk.failing = call;
            disk.error = EIO;
            disk.atOnce = 30000;
            const bool copied =
                copyItem(home.at("from/" + name), home.at("to/" + name)).has_value();
            const int calls = disk.calls();
            if (copied || fs::exists(home.at("to/" + name))) {
                EXPECT_EQ(entries(home.at("to")), 1U);
                fs::remove_all(home.at("to/" + name));
            } else {
                EXPECT_TRUE(fs::is_empty(home.at("to"))) << name << ", call " << call;
                ++failed;
            }
            if (calls <= call) {
                EXPECT_TRUE(copied);
                break;
            }
        }
        EXPECT_GT(failed, 5) << name;
    }
}

TEST_F(FailedCopy, IsGoodForAnotherTry) {
    {
        FailingDisk disk;
        disk.room = 50000;
        EXPECT_FALSE(copyItem(home.at("from/file"), home.at("to/file")));
    }
    EXPECT_TRUE(fs::is_empty(home.at("to")));
    EXPECT_TRUE(copyItem(home.at("from/file"), home.at("to/file")));
    EXPECT_EQ(home.read(home.at("to/file")), content);
}

TEST_F(FailedCopy, ThatWasCutShortByACrashMakesRoomForTheNext) {
    home.write(home.at("to/.file.unfinished"), "half");
    home.write(home.at("to/.tree.unfinished/c/half"), "half");
    EXPECT_TRUE(copyItem(home.at("from/file"), home.at("to/file")));
    EXPECT_TRUE(copyItem(home.at("from/tree"), home.at("to/tree")));
    EXPECT_EQ(entries(home.at("to")), 2U);
    EXPECT_FALSE(fs::exists(home.at("to/tree/c")));
}

TEST_F(FailedCopy, BeyondTheSizeLimitKillsNobodyAndLeavesNothing) {
    rlimit old{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &old), 0);
    const rlimit limit{.rlim_cur = 70000, .rlim_max = old.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_FALSE(copyItem(home.at("from/file"), home.at("to/file")));
    EXPECT_FALSE(copyItem(home.at("from/tree"), home.at("to/tree")));
    ::setrlimit(RLIMIT_FSIZE, &old);
    EXPECT_TRUE(fs::is_empty(home.at("to")));
}

TEST_F(FailedCopy, OfSomethingThatIsNoFileDoesNotWait) {
    ASSERT_EQ(::mkfifo(home.at("from/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(copyItem(home.at("from/pipe"), home.at("to/pipe")));
    EXPECT_FALSE(copyItem(home.at("from"), home.at("to/all")));
    EXPECT_TRUE(fs::is_empty(home.at("to")));
}

TEST_F(FailedCopy, WhereTheFileSystemCannotKeepANameSafeIsMadeAndReplacesNothing) {
    FailingDisk disk;
    disk.renamesExclusively = false;
    EXPECT_TRUE(copyItem(home.at("from/file"), home.at("to/file")));
    EXPECT_EQ(home.read(home.at("to/file")), content);
    EXPECT_FALSE(copyItem(home.at("from/tree/b"), home.at("to/file")));
    EXPECT_EQ(home.read(home.at("to/file")), content);
}

TEST_F(FailedCopy, IsOnTheDiskBeforeItHasItsName) {
    const FailingDisk disk;
    EXPECT_TRUE(copyItem(home.at("from/file"), home.at("to/file")));
    EXPECT_EQ(disk.syncs(), 2) << "of the file and of the folder that names it";
}

} // namespace
} // namespace varnhold::files
