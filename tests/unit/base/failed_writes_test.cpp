#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <vector>

#include "base/files.h"
#include "failing_disk.h"
#include "support/temporary_home.h"

// After each fault a file is the old one or the new one, byte for byte.
namespace varnhold::files {
namespace {

namespace fs = std::filesystem;
using testing::FailingDisk;
using testing::TemporaryHome;

std::string text(char letter, std::size_t size) {
    return std::string(size, letter);
}

struct Change {
    std::string old;
    std::string next;
};

// Longer, shorter, as long, to nothing and from nothing
const std::vector<Change> changes{{text('o', 1000), text('n', 9000)},
                                  {text('o', 9000), text('n', 1000)},
                                  {text('o', 5000), text('n', 5000)},
                                  {text('o', 5000), ""},
                                  {"", text('n', 5000)}};

// Under a limit on the size of the files that the process writes; going beyond it kills.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &old_), 0);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = old_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &old_); }

private:
    rlimit old_{};
};

// Does `act` once for each of its system calls, with that one failing, until it needs no more.
template <class Act>
int failEachCall(const Act& act) {
    int failed = 0;
    for (bool reached = true; reached; ++failed) {
        reached = act(failed);
    }
    return failed;
}

void expectOldOrNew(const TemporaryHome& home, const std::string& path, const Change& change,
                    bool written) {
    EXPECT_EQ(home.read(path), written ? change.next : change.old);
}

class FailedWrite : public ::testing::TestWithParam<bool> {};

TEST_P(FailedWrite, LeavesTheOldContentWhicheverCallFails) {
    const TemporaryHome home;
    const std::string path = home.at("file");
    for (const Change& change : changes) {
        for (const int error : {EIO, ENOSPC, EDQUOT}) {
            const int calls = failEachCall([&](int call) {
                home.write(path, change.old);
                FailingDisk disk;
                disk.reserves = GetParam();
                disk.failing = call;
                disk.error = error;
                disk.atOnce = 700;
                const bool written = writeInPlace(path, change.next).has_value();
                expectOldOrNew(home, path, change, written);
                return disk.calls() > call;
            });
            EXPECT_GT(calls, 3);
        }
    }
}

TEST_P(FailedWrite, OnAFullDiskLeavesTheOldContentAndWritesWhatNeedsNoRoom) {
    const TemporaryHome home;
    const std::string path = home.at("file");
    for (const Change& change : changes) {
        home.write(path, change.old);
        FailingDisk disk;
        disk.reserves = GetParam();
        disk.room = change.old.size();
        const bool written = writeInPlace(path, change.next).has_value();
        expectOldOrNew(home, path, change, written);
        EXPECT_EQ(written, change.next.size() <= change.old.size());
    }
}

TEST_P(FailedWrite, ThatIsToldAtTheCloseOnlyLeavesTheOldContent) {
    const TemporaryHome home;
    const std::string path = home.at("file");
    for (const Change& change : changes) {
        for (const std::uint64_t room : {0U, 100U, 1000U, 4999U}) {
            home.write(path, change.old);
            FailingDisk disk;
            disk.reserves = false;
            disk.room = room;
            disk.tellsLate = true;
            const bool written = writeInPlace(path, change.next).has_value();
            expectOldOrNew(home, path, change, written);
            EXPECT_EQ(written, change.next.size() <= room);
        }
    }
}

TEST_P(FailedWrite, LeavesTheOldContentAloneUntilItIsToldThatThereIsRoom) {
    const TemporaryHome home;
    const Change change{text('o', 1000), text('n', 9000)};
    home.write(home.at("file"), change.old);
    FailingDisk disk;
    disk.reserves = false;
    disk.room = 2000;
    disk.tellsLate = true;
    disk.takesNothingOnceTold = true;
    EXPECT_FALSE(writeInPlace(home.at("file"), change.next));
    EXPECT_EQ(home.read(home.at("file")), change.old);
}

TEST_P(FailedWrite, LeavesNoFileWhereThereWasNone) {
    const TemporaryHome home;
    for (const int error : {EIO, ENOSPC}) {
        failEachCall([&](int call) {
            FailingDisk disk;
            disk.reserves = GetParam();
            disk.failing = call;
            disk.error = error;
            const bool written = writeInPlace(home.at("new"), text('n', 5000)).has_value();
            EXPECT_EQ(fs::exists(home.at("new")), written);
            fs::remove(home.at("new"));
            return disk.calls() > call;
        });
    }
}

TEST_P(FailedWrite, OfALinkToNothingLeavesTheLink) {
    const TemporaryHome home;
    fs::create_symlink("target", home.at("link"));
    FailingDisk disk;
    disk.reserves = GetParam();
    disk.room = 100;
    EXPECT_FALSE(writeInPlace(home.at("link"), text('n', 5000)));
    EXPECT_TRUE(fs::is_symlink(home.at("link")));
    EXPECT_FALSE(fs::exists(home.at("target")));
}

TEST_P(FailedWrite, KeepsInodeModeAndOtherNames) {
    const TemporaryHome home;
    home.write(home.at("file"), "old");
    ::chmod(home.at("file").c_str(), 0600);
    fs::create_hard_link(home.at("file"), home.at("second"));
    FailingDisk disk;
    disk.reserves = GetParam();
    disk.room = 100;
    EXPECT_FALSE(writeInPlace(home.at("file"), text('n', 5000)));
    EXPECT_TRUE(fs::equivalent(home.at("file"), home.at("second")));
    EXPECT_EQ(fs::status(home.at("file")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(home.read(home.at("second")), "old");
}

INSTANTIATE_TEST_SUITE_P(FileSystem, FailedWrite, ::testing::Bool(), [](const auto& each) {
    return each.param ? "ThatReserves" : "ThatCannotReserve";
});

TEST(WriteAtomically, LeavesTheOldContentAndNothingBesideItWhicheverCallFails) {
    const TemporaryHome home;
    home.makeFolder(home.at("folder"));
    const std::string path = home.at("folder/file");
    for (const Change& change : changes) {
        failEachCall([&](int call) {
            home.write(path, change.old);
            FailingDisk disk;
            disk.failing = call;
            disk.error = EIO;
            disk.atOnce = 700;
            const bool written = writeAtomically(path, change.next).has_value();
            const bool reached = disk.calls() > call;
            expectOldOrNew(home, path, change, written);
            EXPECT_EQ(std::distance(fs::directory_iterator(home.at("folder")), {}), 1);
            return reached;
        });
    }
}

TEST(SizeLimit, KillsNobodyAndLeavesTheOldContent) {
    const TemporaryHome home;
    const std::string path = home.at("file");
    const Change change{text('o', 1000), text('n', 5000)};
    for (const rlim_t limit : {0U, 999U, 1000U, 4096U, 4999U}) {
        home.write(path, change.old);
        const FileSizeLimit limited(limit);
        EXPECT_FALSE(writeInPlace(path, change.next)) << limit;
        EXPECT_FALSE(writeAtomically(path, change.next)) << limit;
        EXPECT_FALSE(writeInPlace(home.at("new"), change.next)) << limit;
        EXPECT_EQ(home.read(path), change.old) << limit;
        EXPECT_FALSE(fs::exists(home.at("new"))) << limit;
    }
    const FileSizeLimit limited(5000);
    EXPECT_TRUE(writeInPlace(path, change.next));
    EXPECT_EQ(home.read(path), change.next);
}

TEST(SizeLimit, LetsALongerOldFileBecomeShorter) {
    const TemporaryHome home;
    home.write(home.at("file"), text('o', 9000));
    const FileSizeLimit limited(100);
    EXPECT_FALSE(writeInPlace(home.at("file"), text('n', 200)));
    EXPECT_EQ(fs::file_size(home.at("file")), 9000U);
    EXPECT_TRUE(writeInPlace(home.at("file"), text('n', 50)));
    EXPECT_EQ(home.read(home.at("file")), text('n', 50));
}

TEST(Write, WaitsForNoDisk) {
    const TemporaryHome home;
    home.write(home.at("file"), "old");
    const FailingDisk disk;
    EXPECT_TRUE(writeInPlace(home.at("file"), "new"));
    EXPECT_TRUE(writeAtomically(home.at("file"), "newer"));
    EXPECT_EQ(disk.syncs(), 0);
}

} // namespace
} // namespace varnhold::files
