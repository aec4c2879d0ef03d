#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string>

#include "base/files.h"
#include "support/temporary_home.h"

namespace varnhold::files {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryHome;

TEST(Exists, FilesAndFoldersAlikeCount) {
    const TemporaryHome home;
    home.write(home.at("file"), "");
    EXPECT_TRUE(exists(home.at("file")));
    EXPECT_TRUE(exists(home.path()));
    EXPECT_FALSE(exists(home.at("other")));
    EXPECT_FALSE(exists(home.at("file/below")));
    EXPECT_FALSE(exists(""));
}

TEST(Exists, LinksAreFollowedSoADanglingOneIsNothing) {
    const TemporaryHome home;
    fs::create_symlink(home.path(), home.at("good"));
    fs::create_symlink(home.at("missing"), home.at("dangling"));
    EXPECT_TRUE(exists(home.at("good")));
    EXPECT_FALSE(exists(home.at("dangling")));
}

TEST(IsDirectory, FollowsLinks) {
    const TemporaryHome home;
    home.write(home.at("file"), "");
    fs::create_symlink(home.path(), home.at("folderlink"));
    fs::create_symlink(home.at("file"), home.at("filelink"));
    EXPECT_TRUE(isDirectory(home.path()));
    EXPECT_TRUE(isDirectory(home.at("folderlink")));
    EXPECT_FALSE(isDirectory(home.at("file")));
    EXPECT_FALSE(isDirectory(home.at("filelink")));
    EXPECT_FALSE(isDirectory(home.at("missing")));
}

TEST(AttributesSize, OfALinkIsTheLengthOfItsText) {
    const TemporaryHome home;
    home.write(home.at("big"), std::string(1000000, 'x'));
    fs::create_symlink("big", home.at("link"));
    fs::create_symlink("missing", home.at("dangling"));
    EXPECT_EQ(attributesSize(home.at("big")), 1000000U);
    EXPECT_EQ(attributesSize(home.at("link")), 3U);
    EXPECT_EQ(attributesSize(home.at("dangling")), 7U);
    EXPECT_EQ(attributesSize(home.at("missing")), std::nullopt);
}

TEST(Read, GivesTheBytesAsTheyAre) {
    const TemporaryHome home;
    const std::string content("\xEF\xBB\xBF"
                              "a\0\r\n\xFF",
                              8);
    home.write(home.at("file"), content);
    EXPECT_EQ(read(home.at("file")).value(), content);
    home.write(home.at("empty"), "");
    EXPECT_EQ(read(home.at("empty")).value(), "");
}

TEST(Read, FilesOfAnySizeComeWhole) {
    const TemporaryHome home;
    const std::string content(300001, 'y');
    home.write(home.at("file"), content);
    EXPECT_EQ(read(home.at("file")).value(), content);
}

TEST(Read, AMissingFileAndAFolderAreFailuresThatNameThePath) {
    const TemporaryHome home;
    for (const std::string& path : {home.at("missing"), home.path()}) {
        const auto content = read(path);
        ASSERT_FALSE(content);
        EXPECT_TRUE(content.error().starts_with(path + ": ")) << content.error();
    }
}

TEST(Read, APipeOrADeviceIsAFailureAtOnceAlsoThroughALink) {
    const TemporaryHome home;
    ASSERT_EQ(::mkfifo(home.at("pipe").c_str(), 0600), 0);
    fs::create_symlink("pipe", home.at("link"));
    fs::create_symlink("/dev/zero", home.at("endless"));
    fs::create_symlink("/dev/null", home.at("empty"));
    for (const std::string name : {"pipe", "link", "endless", "empty"}) {
        EXPECT_FALSE(read(home.at(name))) << name;
    }
}

TEST(Read, AFileBeyondTheLargestIsAFailure) {
    const TemporaryHome home;
    home.write(home.at("file"), "");
    fs::resize_file(home.at("file"), largestFile);
    EXPECT_EQ(read(home.at("file")).value().size(), largestFile);
    fs::resize_file(home.at("file"), largestFile + 1);
    EXPECT_FALSE(read(home.at("file")));
}

TEST(ReadTail, AFileAsLongAsTheLimitIsReadFromItsStart) {
    const TemporaryHome home;
    const std::string content = "é" + std::string(6142, 'x');
    ASSERT_EQ(content.size(), 6144U);
    home.write(home.at("log"), content);
    EXPECT_EQ(readTail(home.at("log"), 6144).value(), content);
}

TEST(ReadTail, OneByteMoreBeginsAtTheSecondByte) {
    const TemporaryHome home;
    const std::string content = "é" + std::string(6143, 'x');
    ASSERT_EQ(content.size(), 6145U);
    home.write(home.at("log"), content);
    EXPECT_EQ(readTail(home.at("log"), 6144).value(), content.substr(1));
}

TEST(ReadTail, ShortEmptyAndMissingFiles) {
    const TemporaryHome home;
    home.write(home.at("short"), "abc");
    home.write(home.at("empty"), "");
    EXPECT_EQ(readTail(home.at("short"), 6144).value(), "abc");
    EXPECT_EQ(readTail(home.at("short"), 2).value(), "bc");
    EXPECT_EQ(readTail(home.at("short"), 0).value(), "");
    EXPECT_EQ(readTail(home.at("empty"), 6144).value(), "");
    EXPECT_FALSE(readTail(home.at("missing"), 6144));
    EXPECT_FALSE(readTail(home.path(), 6144));
}

TEST(ReadTail, OfAPipeThatNobodyWritesToIsEmptyAtOnce) {
    const TemporaryHome home;
    ASSERT_EQ(::mkfifo(home.at("pipe").c_str(), 0600), 0);
    EXPECT_EQ(readTail(home.at("pipe"), 6144).value(), "");
}

TEST(ReadTail, EndsAtItsLimitWhereThereIsMoreThanTheSizeSaid) {
    const TemporaryHome home;
    const std::string path = home.at("pipe");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    const int writer = ::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(writer, 0);
    ASSERT_EQ(::write(writer, "abcdef", 6), 6);
    EXPECT_EQ(readTail(path, 4).value(), "abcd");
    EXPECT_FALSE(readTail(path, 4)) << "the writer may write more, and isn't waited for";
    ::close(writer);
}

TEST(CreateDirectories, MakesTheParentsToo) {
    const TemporaryHome home;
    EXPECT_TRUE(createDirectories(home.at("a/b/c")));
    EXPECT_TRUE(fs::is_directory(home.at("a/b/c")));
}

TEST(CreateDirectories, AFolderOrALinkToOneThatIsThereIsASuccess) {
    const TemporaryHome home;
    home.write(home.at("a/kept"), "x");
    fs::create_directory_symlink(home.at("a"), home.at("link"));
    EXPECT_TRUE(createDirectories(home.at("a")));
    EXPECT_TRUE(createDirectories(home.at("a/")));
    EXPECT_TRUE(createDirectories(home.at("link")));
    EXPECT_TRUE(createDirectories(home.at("link/b")));
    EXPECT_EQ(home.read(home.at("a/kept")), "x");
    EXPECT_TRUE(fs::is_directory(home.at("a/b")));
}

TEST(CreateDirectories, AFileInTheWayIsAFailureAndStays) {
    const TemporaryHome home;
    home.write(home.at("file"), "x");
    EXPECT_FALSE(createDirectories(home.at("file")));
    EXPECT_FALSE(createDirectories(home.at("file/below")));
    EXPECT_EQ(home.read(home.at("file")), "x");
}

} // namespace
} // namespace varnhold::files
