#include "platform/private_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "support/temporary_home.h"

namespace varnhold::platform {
namespace {

namespace fs = std::filesystem;
using varnhold::testing::TemporaryHome;

TEST(PrivateFolder, IsMadeWithItsParentsForTheOwnerAloneAndGoodForASecondTime) {
    const TemporaryHome home;
    for (int time = 0; time < 2; ++time) {
        const auto folder = PrivateFolder::make(home.at("a/b/private"));
        ASSERT_TRUE(folder) << folder.error();
        EXPECT_EQ(folder->path(), home.at("a/b/private"));
    }
    for (const char* made : {"a", "a/b", "a/b/private"}) {
        EXPECT_EQ(fs::status(home.at(made)).permissions(), fs::perms::owner_all);
    }
}

TEST(PrivateFolder, OneThatIsNotThereIsNone) {
    const TemporaryHome home;
    const auto found = PrivateFolder::find(home.at("missing"));
    ASSERT_TRUE(found) << found.error();
    EXPECT_FALSE(*found);
}

TEST(PrivateFolder, OneThatOthersHaveAnyRightToIsRefusedAndStays) {
    const TemporaryHome home;
    const std::string path = home.at("open");
    home.makeFolder(path);
    for (const fs::perms right :
         {fs::perms::group_read, fs::perms::group_write, fs::perms::group_exec,
          fs::perms::others_read, fs::perms::others_write, fs::perms::others_exec}) {
        fs::permissions(path, fs::perms::owner_all | right);
        EXPECT_FALSE(PrivateFolder::find(path));
        EXPECT_FALSE(PrivateFolder::make(path));
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all | right);
    }
}

TEST(PrivateFolder, AnotherUsersIsRefused) {
    const TemporaryHome home;
    std::string path = "/root"; // whatever its mode
    if (::getuid() == 0) {
        path = home.at("given away");
        ASSERT_TRUE(PrivateFolder::make(path));
        ASSERT_EQ(::chown(path.c_str(), 1, 1), 0);
    }
    EXPECT_FALSE(PrivateFolder::find(path));
    EXPECT_FALSE(PrivateFolder::make(path));
}

TEST(PrivateFolder, ALinkAndAFileAreRefusedWithTheirPath) {
    const TemporaryHome home;
    const auto folder = PrivateFolder::make(home.at("private"));
    ASSERT_TRUE(folder);
    fs::create_directory_symlink(home.at("private"), home.at("private/link"));
    home.write(home.at("private/file"), "");
    fs::permissions(home.at("private/file"), fs::perms::owner_all);
    for (const std::string name : {"link", "file"}) {
        for (const auto& error : {folder->findIn(name).error(), folder->makeIn(name).error(),
                                  PrivateFolder::make(home.at("private/" + name)).error()}) {
            EXPECT_EQ(error, home.at("private/" + name) + ": not a private folder of this user");
        }
    }
}

TEST(PrivateFolder, StaysTheSameWhateverTakesItsPlace) {
    const TemporaryHome home;
    const auto folder = PrivateFolder::make(home.at("private"));
    ASSERT_TRUE(folder);
    fs::rename(home.at("private"), home.at("moved"));
    home.write(home.at("private/file"), "planted");
    ASSERT_TRUE(folder->write("file", "ours"));
    EXPECT_TRUE(folder->remove("file"));
    EXPECT_EQ(home.read(home.at("private/file")), "planted");
}

TEST(PrivateFolder, FilesAreWrittenAndReadForTheOwnerAlone) {
    const TemporaryHome home;
    const auto folder = PrivateFolder::make(home.at("private"));
    ASSERT_TRUE(folder);
    ASSERT_TRUE(folder->write("file", "first and long"));
    ASSERT_TRUE(folder->write("file", "second"));
    EXPECT_EQ(folder->read("file"), "second");
    EXPECT_EQ(fs::status(home.at("private/file")).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    ASSERT_TRUE(folder->write("script", "", 0700));
    EXPECT_EQ(fs::status(home.at("private/script")).permissions(), fs::perms::owner_all);
    EXPECT_EQ(folder->names().size(), 2U);
    EXPECT_FALSE(folder->read("missing"));
}

TEST(PrivateFolder, NoLinkIsFollowedAndNoPipeIsWaitedFor) {
    const TemporaryHome home;
    const auto folder = PrivateFolder::make(home.at("private"));
    ASSERT_TRUE(folder);
    home.write(home.at("outside"), "dear");
    fs::create_symlink(home.at("outside"), home.at("private/link"));
    ASSERT_EQ(::mkfifo(home.at("private/pipe").c_str(), 0600), 0);
    for (const std::string name : {"link", "pipe"}) {
        EXPECT_FALSE(folder->read(name));
        EXPECT_FALSE(folder->write(name, "x"));
    }
    EXPECT_EQ(home.read(home.at("outside")), "dear");
}

TEST(PrivateFolder, OnlyFilesOfAFolderAreRemovedWithIt) {
    const TemporaryHome home;
    const auto folder = PrivateFolder::make(home.at("private"));
    ASSERT_TRUE(folder);
    home.write(home.at("private/flat/file"), "");
    home.write(home.at("private/deep/below/file"), "dear");
    home.write(home.at("outside/file"), "dear");
    fs::create_directory_symlink(home.at("outside"), home.at("private/link"));
    fs::create_directory_symlink(home.at("outside"), home.at("private/flat/link"));
    EXPECT_TRUE(folder->removeFolderOfFiles("flat"));
    EXPECT_TRUE(folder->removeFolderOfFiles("missing"));
    EXPECT_FALSE(folder->removeFolderOfFiles("deep"));
    EXPECT_FALSE(folder->removeFolderOfFiles("link"));
    EXPECT_FALSE(folder->has("flat"));
    EXPECT_EQ(home.read(home.at("private/deep/below/file")), "dear");
    EXPECT_EQ(home.read(home.at("outside/file")), "dear");
}

} // namespace
} // namespace varnhold::platform
