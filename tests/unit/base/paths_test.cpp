#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/paths.h"
#include "support/temporary_home.h"

namespace varnhold::paths {
namespace {

namespace fs = std::filesystem;

TEST(LastComponent, IsTheLastNameWhateverSlashesFollow) {
    EXPECT_EQ(lastComponent("a/b"), "b");
    EXPECT_EQ(lastComponent("a/b/"), "b");
    EXPECT_EQ(lastComponent("/a//b///"), "b");
    EXPECT_EQ(lastComponent("name"), "name");
    EXPECT_EQ(lastComponent("/name"), "name");
    EXPECT_EQ(lastComponent("x/.."), "..");
    EXPECT_EQ(lastComponent("x/."), ".");
}

TEST(LastComponent, OfSlashesAloneIsOneSlashAndOfNothingNothing) {
    EXPECT_EQ(lastComponent("/"), "/");
    EXPECT_EQ(lastComponent("//"), "/");
    EXPECT_EQ(lastComponent(""), "");
}

TEST(Extension, IsTheTextAfterTheLastDot) {
    EXPECT_EQ(extension("readme.md"), "md");
    EXPECT_EQ(extension("/a/b.c/readme.tar.gz"), "gz");
    EXPECT_EQ(extension("notes.MD"), "MD");
    EXPECT_EQ(extension("folder.d/"), "d");
    EXPECT_EQ(extension(".hidden.txt"), "txt");
}

TEST(Extension, IsEmptyWhereADotBeginsOrEndsTheName) {
    for (const char* path :
         {"readme", ".md", "a/.bashrc", "a.", ".", "..", "..md", "...md", "a.d/readme", "", "/"}) {
        EXPECT_EQ(extension(path), "") << path;
    }
}

TEST(Extension, IsEmptyWhereItHoldsABlank) {
    EXPECT_EQ(extension("notes.txt "), "");
    EXPECT_EQ(extension("v1.0 final"), "");
    EXPECT_EQ(extension("my notes.txt"), "txt");
}

TEST(Standardized, DropsDotsDoubleSlashesAndTheLastSlash) {
    EXPECT_EQ(standardized("/nonexistent/a/../b/./c//d/"), "/nonexistent/b/c/d");
    EXPECT_EQ(standardized("/nonexistent/app/../daemon"), "/nonexistent/daemon");
    EXPECT_EQ(standardized("/"), "/");
    EXPECT_EQ(standardized("/nonexistent/.."), "/");
}

TEST(Standardized, ResolvesLinksFirstWhereThePathExists) {
    const testing::TemporaryHome home;
    const std::string root = fs::canonical(home.path());
    home.makeFolder(root + "/real/app");
    home.makeFolder(root + "/real/daemon");
    fs::create_directory_symlink(root + "/real/app", root + "/link");
    EXPECT_EQ(standardized(root + "/link/../daemon"), root + "/real/daemon");
}

TEST(Standardized, GoesByTheTextAloneWhereNothingExists) {
    const testing::TemporaryHome home;
    const std::string root = fs::canonical(home.path());
    home.makeFolder(root + "/real/app");
    fs::create_directory_symlink(root + "/real/app", root + "/link");
    EXPECT_EQ(standardized(root + "/link/../daemon"), root + "/daemon");
}

} // namespace
} // namespace varnhold::paths
