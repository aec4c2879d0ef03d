#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

#include "base/files.h"
#include "support/temporary_home.h"

namespace varnhold::files {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryHome;

TEST(CopyItem, AFileIsCopiedWithItsMode) {
    const TemporaryHome home;
    home.write(home.at("from"), std::string("a\0b", 3));
    ::chmod(home.at("from").c_str(), 0600);
    ASSERT_TRUE(copyItem(home.at("from"), home.at("to")));
    EXPECT_EQ(home.read(home.at("to")), std::string("a\0b", 3));
    struct stat found {};
    ASSERT_EQ(::lstat(home.at("to").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
    EXPECT_EQ(home.read(home.at("from")), std::string("a\0b", 3));
}

TEST(CopyItem, ALinkIsCopiedAsALink) {
    const TemporaryHome home;
    home.write(home.at("file"), "x");
    fs::create_symlink("file", home.at("link"));
    fs::create_symlink("missing", home.at("dangling"));
    fs::create_directory_symlink(home.path(), home.at("folderlink"));
    ASSERT_TRUE(copyItem(home.at("link"), home.at("link2")));
    ASSERT_TRUE(copyItem(home.at("dangling"), home.at("dangling2")));
    ASSERT_TRUE(copyItem(home.at("folderlink"), home.at("folderlink2")));
    EXPECT_EQ(fs::read_symlink(home.at("link2")), "file");
    EXPECT_EQ(fs::read_symlink(home.at("dangling2")), "missing");
    EXPECT_EQ(fs::read_symlink(home.at("folderlink2")), home.path());
}

TEST(CopyItem, AFolderIsCopiedWithAllInItAndLinksStayLinks) {
    const TemporaryHome home;
    home.write(home.at("from/a/b/deep"), "1");
    home.write(home.at("from/.hidden"), "2");
    home.makeFolder(home.at("from/empty"));
    fs::create_symlink("a/b/deep", home.at("from/link"));
    fs::create_directory_symlink("a", home.at("from/folderlink"));
    ASSERT_TRUE(copyItem(home.at("from"), home.at("to")));
    EXPECT_EQ(home.read(home.at("to/a/b/deep")), "1");
    EXPECT_EQ(home.read(home.at("to/.hidden")), "2");
    EXPECT_TRUE(fs::is_directory(home.at("to/empty")));
    EXPECT_EQ(fs::read_symlink(home.at("to/link")), "a/b/deep");
    EXPECT_EQ(fs::read_symlink(home.at("to/folderlink")), "a");
}

TEST(CopyItem, AnythingAtTheTargetIsARefusalAndStays) {
    const TemporaryHome home;
    home.write(home.at("from"), "new");
    home.write(home.at("file"), "old");
    home.makeFolder(home.at("folder"));
    fs::create_symlink("missing", home.at("dangling"));
    EXPECT_FALSE(copyItem(home.at("from"), home.at("file")));
    EXPECT_FALSE(copyItem(home.at("from"), home.at("folder")));
    EXPECT_FALSE(copyItem(home.at("from"), home.at("dangling")));
    EXPECT_EQ(home.read(home.at("file")), "old");
    EXPECT_TRUE(fs::is_empty(home.at("folder")));
    EXPECT_FALSE(fs::exists(home.at("missing")));
}

TEST(CopyItem, AFolderIsNotMergedIntoAnother) {
    const TemporaryHome home;
    home.write(home.at("from/a"), "new");
    home.write(home.at("to/b"), "old");
    EXPECT_FALSE(copyItem(home.at("from"), home.at("to")));
    EXPECT_FALSE(fs::exists(home.at("to/a")));
}

TEST(CopyItem, AMissingSourceOrTargetFolderIsAFailure) {
    const TemporaryHome home;
    home.write(home.at("file"), "x");
    EXPECT_FALSE(copyItem(home.at("missing"), home.at("to")));
    EXPECT_FALSE(copyItem(home.at("file"), home.at("missing/to")));
    EXPECT_FALSE(copyItem(home.at("file"), home.at("file/to")));
    EXPECT_FALSE(fs::exists(home.at("to")));
    EXPECT_FALSE(fs::exists(home.at("missing")));
}

} // namespace
} // namespace varnhold::files
