#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>

#include "base/files.h"
#include "support/temporary_home.h"

namespace varnhold::files {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryHome;

struct stat attributes(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(::lstat(path.c_str(), &found), 0) << path;
    return found;
}

unsigned modeOf(const std::string& path) {
    return attributes(path).st_mode & 07777U;
}

// The mode that a plain file write gives to a new file.
unsigned modeOfNewFiles() {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666U & ~mask;
}

std::size_t entries(const std::string& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(WriteInPlace, KeepsLinkInodeModeAndOtherNames) {
    const TemporaryHome home;
    home.write(home.at("real/bots.json"), "a longer old content");
    ::chmod(home.at("real/bots.json").c_str(), 0600);
    fs::create_hard_link(home.at("real/bots.json"), home.at("second"));
    fs::create_symlink("real/bots.json", home.at("bots.json"));
    const auto inode = attributes(home.at("real/bots.json")).st_ino;

    ASSERT_TRUE(writeInPlace(home.at("bots.json"), "[]"));

    EXPECT_TRUE(fs::is_symlink(home.at("bots.json")));
    EXPECT_EQ(attributes(home.at("real/bots.json")).st_ino, inode);
    EXPECT_EQ(modeOf(home.at("real/bots.json")), 0600U);
    EXPECT_EQ(home.read(home.at("real/bots.json")), "[]");
    EXPECT_EQ(home.read(home.at("second")), "[]");
}

TEST(WriteInPlace, ANewFileHasTheUsersModeAndNothingElseAppears) {
    const TemporaryHome home;
    ASSERT_TRUE(writeInPlace(home.at("new"), "x"));
    EXPECT_EQ(modeOf(home.at("new")), modeOfNewFiles());
    EXPECT_EQ(home.read(home.at("new")), "x");
    EXPECT_EQ(entries(home.path()), 1U);
}

TEST(WriteInPlace, MakesTheFileThatADanglingLinkNames) {
    const TemporaryHome home;
    fs::create_symlink("target", home.at("link"));
    ASSERT_TRUE(writeInPlace(home.at("link"), "x"));
    EXPECT_TRUE(fs::is_symlink(home.at("link")));
    EXPECT_EQ(home.read(home.at("target")), "x");
}

TEST(WriteInPlace, EmptyContentEmptiesTheFile) {
    const TemporaryHome home;
    home.write(home.at("file"), "old");
    ASSERT_TRUE(writeInPlace(home.at("file"), ""));
    EXPECT_EQ(attributes(home.at("file")).st_size, 0);
}

TEST(WriteInPlace, LargeContentComesWhole) {
    const TemporaryHome home;
    const std::string content(1000003, 'z');
    ASSERT_TRUE(writeInPlace(home.at("file"), content));
    EXPECT_EQ(home.read(home.at("file")), content);
}

TEST(WriteInPlace, FailsOnAFolderAndWhereTheParentIsMissing) {
    const TemporaryHome home;
    home.makeFolder(home.at("folder"));
    EXPECT_FALSE(writeInPlace(home.at("folder"), "x"));
    EXPECT_FALSE(writeInPlace(home.at("missing/file"), "x"));
    EXPECT_FALSE(fs::exists(home.at("missing")));
}

TEST(WriteInPlace, ToAPipeOrADeviceIsAFailureAtOnce) {
    const TemporaryHome home;
    ASSERT_EQ(::mkfifo(home.at("pipe").c_str(), 0600), 0);
    fs::create_symlink("/dev/null", home.at("null"));
    EXPECT_FALSE(writeInPlace(home.at("pipe"), "x"));
    EXPECT_FALSE(writeInPlace(home.at("null"), "x"));
    EXPECT_TRUE(fs::is_fifo(home.at("pipe")));
}

TEST(WriteAtomically, KeepsTheModeAndLeavesOtherNamesTheOldContent) {
    const TemporaryHome home;
    home.write(home.at("PROMPT.md"), "old");
    ::chmod(home.at("PROMPT.md").c_str(), 0640);
    fs::create_hard_link(home.at("PROMPT.md"), home.at("second"));
    ASSERT_TRUE(writeAtomically(home.at("PROMPT.md"), "new"));
    EXPECT_EQ(home.read(home.at("PROMPT.md")), "new");
    EXPECT_EQ(modeOf(home.at("PROMPT.md")), 0640U);
    EXPECT_EQ(home.read(home.at("second")), "old");
}

TEST(WriteAtomically, AReaderThatHasTheOldFileOpenKeepsIt) {
    const TemporaryHome home;
    home.write(home.at("file"), "old");
    std::ifstream reader(home.at("file"));
    ASSERT_TRUE(writeAtomically(home.at("file"), "new"));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old");
}

TEST(WriteAtomically, ANewFileHasTheUsersMode) {
    const TemporaryHome home;
    ASSERT_TRUE(writeAtomically(home.at("new"), "x"));
    EXPECT_EQ(modeOf(home.at("new")), modeOfNewFiles());
}

TEST(WriteAtomically, ReplacesALinkAndLeavesItsTarget) {
    const TemporaryHome home;
    home.write(home.at("target"), "old");
    fs::create_symlink("target", home.at("link"));
    ASSERT_TRUE(writeAtomically(home.at("link"), "new"));
    EXPECT_FALSE(fs::is_symlink(home.at("link")));
    EXPECT_EQ(home.read(home.at("link")), "new");
    EXPECT_EQ(home.read(home.at("target")), "old");
}

TEST(WriteAtomically, LeavesNoTemporaryFileOnSuccessOrFailure) {
    const TemporaryHome home;
    home.write(home.at("folder/inside"), "x");
    ASSERT_TRUE(writeAtomically(home.at("file"), "1"));
    ASSERT_TRUE(writeAtomically(home.at("file"), "2"));
    EXPECT_FALSE(writeAtomically(home.at("folder"), "x"));
    EXPECT_EQ(entries(home.path()), 2U);
    EXPECT_EQ(home.read(home.at("folder/inside")), "x");
}

TEST(WriteAtomically, FailsWhereTheParentIsMissingOrAFile) {
    const TemporaryHome home;
    home.write(home.at("file"), "x");
    EXPECT_FALSE(writeAtomically(home.at("missing/file"), "x"));
    EXPECT_FALSE(writeAtomically(home.at("file/below"), "x"));
    EXPECT_FALSE(fs::exists(home.at("missing")));
}

} // namespace
} // namespace varnhold::files
