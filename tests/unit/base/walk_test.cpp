#include "base/walk.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "support/temporary_home.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
namespace fs = std::filesystem;

// "1 name" for each entry, the number being its level, with the walked folder cut off.
std::vector<std::string> walked(const std::string& folder, int deepest = 99) {
    std::vector<std::string> seen;
    files::walk(folder, [&](const std::string& path, int depth) {
        seen.push_back(std::to_string(depth) + path.substr(folder.size()));
        return depth < deepest ? files::Descend::yes : files::Descend::no;
    });
    return seen;
}

TEST(Walk, GivesAFolderBeforeWhatIsInItAndNamesInOrderOfTheirBytes) {
    const TemporaryHome home;
    home.write(home.at("x/b/z"), "");
    home.write(home.at("x/b/B"), "");
    home.write(home.at("x/a"), "");
    home.write(home.at("x/Z"), "");
    EXPECT_THAT(walked(home.at("x")), ElementsAre("1/Z", "1/a", "1/b", "2/b/B", "2/b/z"));
}

TEST(Walk, LeavesOutHiddenEntriesWithAllInThem) {
    const TemporaryHome home;
    home.write(home.at("x/.hidden/a"), "");
    home.write(home.at("x/.a"), "");
    home.write(home.at("x/a"), "");
    EXPECT_THAT(walked(home.at("x")), ElementsAre("1/a"));
}

TEST(Walk, GivesLinksAsEntriesAndNeverFollowsThem) {
    const TemporaryHome home;
    home.write(home.at("elsewhere/secret"), "");
    home.makeFolder(home.at("x"));
    fs::create_directory_symlink(home.at("elsewhere"), home.at("x/folder"));
    fs::create_directory_symlink(home.at("x"), home.at("x/loop"));
    fs::create_symlink(home.at("nothing"), home.at("x/dangling"));
    EXPECT_THAT(walked(home.at("x")), ElementsAre("1/dangling", "1/folder", "1/loop"));
}

TEST(Walk, FindsNothingInAFolderGivenAsALinkWithOrWithoutASlash) {
    const TemporaryHome home;
    home.write(home.at("x/a"), "");
    fs::create_directory_symlink(home.at("x"), home.at("link"));
    EXPECT_THAT(walked(home.at("link")), IsEmpty());
    EXPECT_THAT(walked(home.at("link/")), IsEmpty());
}

TEST(Walk, FindsNothingInAFileOrNothing) {
    const TemporaryHome home;
    home.write(home.at("file"), "");
    EXPECT_THAT(walked(home.at("file")), IsEmpty());
    EXPECT_THAT(walked(home.at("missing")), IsEmpty());
    EXPECT_THAT(walked(""), IsEmpty());
}

TEST(Walk, JoinsPathsWithOneSlash) {
    const TemporaryHome home;
    home.write(home.at("x/a"), "");
    std::vector<std::string> seen;
    files::walk(home.at("x//"), [&](const std::string& path, int) {
        seen.push_back(path);
        return files::Descend::yes;
    });
    EXPECT_THAT(seen, ElementsAre(home.at("x/a")));
}

TEST(Walk, StaysOutOfFoldersThatTheVisitorDoesNotWant) {
    const TemporaryHome home;
    home.write(home.at("x/a/b/c"), "");
    EXPECT_THAT(walked(home.at("x"), 2), ElementsAre("1/a", "2/a/b"));
}

} // namespace
} // namespace varnhold::testing
