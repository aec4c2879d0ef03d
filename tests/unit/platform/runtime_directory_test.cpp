#include "platform/runtime_directory.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <pwd.h>
#include <string>
#include <unistd.h>

#include "support/temporary_home.h"

namespace varnhold::platform {
namespace {

namespace fs = std::filesystem;

class RuntimeDirectoryOf : public ::testing::Test {
protected:
    RuntimeDirectoryOf() {
        for (const std::string& folder : {session, hints.loginFolder, hints.home}) {
            world.makeFolder(folder);
            fs::permissions(folder, fs::perms::owner_all);
        }
    }

    varnhold::testing::TemporaryHome world;
    std::string session = world.at("session");
    RuntimeHints hints{.xdgRuntimeDir = session.c_str(),
                       .loginFolder = world.at("login"),
                       .home = world.at("home"),
                       .userId = ::getuid()};
};

TEST_F(RuntimeDirectoryOf, LiesBelowTheSessionsFolder) {
    const auto found = findRuntimeDirectory(hints);
    ASSERT_TRUE(found) << found.error();
    EXPECT_EQ(found->path, session + "/varnhold");
    EXPECT_EQ(found->remark, "");
    EXPECT_FALSE(found->variableIsVoid);
}

TEST_F(RuntimeDirectoryOf, LiesInTheLoginManagersFolderWhereNoneIsSet) {
    for (const char* none : {static_cast<const char*>(nullptr), ""}) {
        hints.xdgRuntimeDir = none;
        const auto found = findRuntimeDirectory(hints);
        ASSERT_TRUE(found) << found.error();
        EXPECT_EQ(found->path, hints.loginFolder + "/varnhold");
        EXPECT_EQ(found->remark, "");
    }
}

TEST_F(RuntimeDirectoryOf, ThatPointsNowhereFallsBackAndSaysSo) {
    const std::string missing = world.at("missing");
    const std::string file = world.at("file");
    world.write(file, "");
    for (const std::string& nowhere : {missing, file, std::string("run/user")}) {
        hints.xdgRuntimeDir = nowhere.c_str();
        const auto found = findRuntimeDirectory(hints);
        ASSERT_TRUE(found) << found.error();
        EXPECT_EQ(found->path, hints.loginFolder + "/varnhold");
        EXPECT_EQ(found->remark,
                  "XDG_RUNTIME_DIR is " + nowhere + ", which is no folder; using " + found->path);
        EXPECT_TRUE(found->variableIsVoid);
    }
}

TEST_F(RuntimeDirectoryOf, IsNoFolderThatOthersCanWriteTo) {
    for (const fs::perms right : {fs::perms::group_write, fs::perms::others_write}) {
        fs::permissions(session, fs::perms::owner_all | right);
        const auto found = findRuntimeDirectory(hints);
        ASSERT_TRUE(found) << found.error();
        EXPECT_EQ(found->path, hints.loginFolder + "/varnhold");
        EXPECT_NE(found->remark.find("to which others can write"), std::string::npos);
        EXPECT_FALSE(found->variableIsVoid); // others may have their use for it
        fs::permissions(hints.loginFolder, fs::perms::owner_all | right);
        EXPECT_EQ(findRuntimeDirectory(hints)->path, hints.home + "/.local/state/varnhold/run");
        fs::permissions(hints.loginFolder, fs::perms::owner_all);
    }
}

TEST_F(RuntimeDirectoryOf, LiesInTheHomeAsALastResortAndThatIsSaidUntilItIsThere) {
    hints.xdgRuntimeDir = nullptr;
    fs::remove(hints.loginFolder);
    const std::string path = hints.home + "/.local/state/varnhold/run";
    EXPECT_EQ(findRuntimeDirectory(hints)->path, path);
    EXPECT_EQ(findRuntimeDirectory(hints)->remark,
              "there is no runtime folder of this user's; using " + path);
    world.makeFolder(path);
    EXPECT_EQ(findRuntimeDirectory(hints)->remark, "");
}

TEST_F(RuntimeDirectoryOf, AHomeThatIsNotOursIsLeftForTheOneThePasswordsKnow) {
    hints.xdgRuntimeDir = nullptr;
    fs::remove(hints.loginFolder);
    hints.home = world.at("missing");
    const std::string known = ::getpwuid(::getuid())->pw_dir;
    EXPECT_EQ(findRuntimeDirectory(hints)->path, known + "/.local/state/varnhold/run");
    hints.userId = 4294967294; // nobody has this one
    EXPECT_FALSE(findRuntimeDirectory(hints));
}

TEST_F(RuntimeDirectoryOf, RootRefusesAUsersAndAUserLeavesRootsAlone) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can give folders away";
    }
    ASSERT_EQ(::chown(session.c_str(), 1, 1), 0);
    EXPECT_EQ(findRuntimeDirectory(hints).error(),
              "XDG_RUNTIME_DIR: " + session +
                  " belongs to another user, and root would spoil it for him");
    ASSERT_EQ(::chown(session.c_str(), 0, 0), 0);
    ASSERT_EQ(::chown(hints.loginFolder.c_str(), 1, 1), 0);
    hints.userId = 1;
    const auto found = findRuntimeDirectory(hints);
    ASSERT_TRUE(found) << found.error();
    EXPECT_EQ(found->path, hints.loginFolder + "/varnhold");
    EXPECT_NE(found->remark.find("belongs to another user"), std::string::npos);
}

} // namespace
} // namespace varnhold::platform
