#include "shell/daemon_code.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "base/files.h"
#include "support/fake_platform.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using testing::FakePlatform;
using testing::TemporaryHome;

std::string pythonWhere(std::function<bool(const std::string& path)> isThere) {
    FakePlatform fake;
    fake.isThere = std::move(isThere);
    return findPython(fake.interfaces.system);
}

// Of a program with this bundle on the real file system.
std::string resourcesOf(const std::string& bundle) {
    FakePlatform fake;
    fake.bundle = bundle;
    return daemonResourcesPath(fake.interfaces.system);
}

std::string foundAmong(const std::set<std::string>& installed) {
    return pythonWhere([&](const std::string& path) { return installed.contains(path); });
}

std::string missingBeside(const std::set<std::string>& there) {
    FakePlatform fake;
    fake.bundle = "/usr/lib/varnhold";
    fake.isThere = [&](const std::string& path) { return there.contains(path); };
    return missingDaemonCode(fake.interfaces.system);
}

TEST(MissingDaemonCode, IsWarnedOfOnStandardErrorWhereItIsMissing) {
    FakePlatform fake;
    fake.bundle = "/usr/lib/varnhold";
    bool isThere = false;
    fake.isThere = [&](const std::string&) { return isThere; };
    ::testing::internal::CaptureStderr();
    warnOfMissingDaemonCode(fake.interfaces.system);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "varnhold: " + missingDaemonCode(fake.interfaces.system) + ".\n");
    isThere = true;
    ::testing::internal::CaptureStderr();
    warnOfMissingDaemonCode(fake.interfaces.system);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
}

TEST(MissingDaemonCode, IsToldWithThePlaceWhereItBelongs) {
    const std::string inside = "/usr/lib/varnhold/Contents/Resources/daemon";
    EXPECT_EQ(missingBeside({}), "there is no provider_telegramd in /usr/lib/daemon, so no bot can "
                                 "run; put the bots' code into " +
                                     inside);
    EXPECT_EQ(missingBeside({inside}), "there is no provider_telegramd in " + inside +
                                           ", so no bot can run; put the bots' code into " +
                                           inside);
}

TEST(MissingDaemonCode, IsNothingToTellWhereItIsInItsPlace) {
    const std::string inside = "/usr/lib/varnhold/Contents/Resources/daemon";
    EXPECT_EQ(missingBeside({inside, inside + "/provider_telegramd"}), "");
    EXPECT_EQ(missingBeside({"/usr/lib/daemon/provider_telegramd"}), "");
}

TEST(FindPython, AsksForSixPlacesInThisOrder) {
    std::vector<std::string> asked;
    static_cast<void>(pythonWhere([&](const std::string& path) {
        asked.push_back(path);
        return false;
    }));
    EXPECT_THAT(asked, ElementsAre("/opt/homebrew/bin/python3.14", "/opt/homebrew/bin/python3.13",
                                   "/opt/homebrew/bin/python3.12", "/opt/homebrew/bin/python3",
                                   "/usr/local/bin/python3", "/usr/bin/python3"));
}

TEST(FindPython, WithNoInterpreterAnywhereTheLastPlaceIsGivenAllTheSame) {
    EXPECT_EQ(foundAmong({}), "/usr/bin/python3");
}

TEST(FindPython, EachPlaceIsTakenWhereItIsTheFirst) {
    const std::vector<std::string> places{
        "/opt/homebrew/bin/python3.14", "/opt/homebrew/bin/python3.13",
        "/opt/homebrew/bin/python3.12", "/opt/homebrew/bin/python3",
        "/usr/local/bin/python3",       "/usr/bin/python3"};
    for (std::size_t i = 0; i < places.size(); ++i) {
        const std::set<std::string> rest(places.begin() + static_cast<std::ptrdiff_t>(i),
                                         places.end());
        EXPECT_EQ(foundAmong(rest), places[i]);
    }
}

TEST(FindPython, AVersionedInterpreterWinsOverThePlainOne) {
    EXPECT_EQ(foundAmong({"/opt/homebrew/bin/python3", "/opt/homebrew/bin/python3.13"}),
              "/opt/homebrew/bin/python3.13");
}

TEST(FindPython, OtherVersionsAreNeverLookedFor) {
    EXPECT_EQ(foundAmong({"/opt/homebrew/bin/python3.11", "/opt/homebrew/bin/python3.15",
                          "/opt/homebrew/bin/python", "/usr/local/bin/python3.14"}),
              "/usr/bin/python3");
}

TEST(FindPython, AnyExistingEntryCountsEvenAFolder) {
    const TemporaryHome root;
    root.makeFolder(root.at("opt/homebrew/bin/python3.14"));
    root.write(root.at("usr/bin/python3"), "");
    EXPECT_EQ(
        pythonWhere([&](const std::string& path) { return files::exists(root.path() + path); }),
        "/opt/homebrew/bin/python3.14");
}

TEST(FindPython, LooksAgainAtEveryCall) {
    const TemporaryHome root;
    const auto look = [&](const std::string& path) { return files::exists(root.path() + path); };
    EXPECT_EQ(pythonWhere(look), "/usr/bin/python3");
    root.write(root.at("usr/local/bin/python3"), "");
    EXPECT_EQ(pythonWhere(look), "/usr/local/bin/python3");
}

TEST(DaemonResourcesPath, IsInsideTheBundleWhereThatExists) {
    const TemporaryHome home;
    const std::string bundle = home.at("Varnhold.app");
    home.makeFolder(bundle + "/Contents/Resources/daemon");
    home.makeFolder(home.at("daemon"));
    EXPECT_EQ(resourcesOf(bundle), bundle + "/Contents/Resources/daemon");
}

TEST(DaemonResourcesPath, InsideTheBundleEvenAFileCounts) {
    const TemporaryHome home;
    const std::string bundle = home.at("Varnhold.app");
    home.write(bundle + "/Contents/Resources/daemon", "");
    EXPECT_EQ(resourcesOf(bundle), bundle + "/Contents/Resources/daemon");
}

TEST(DaemonResourcesPath, InsideTheBundleThePathStaysAsItStands) {
    const TemporaryHome home;
    home.makeFolder(home.at("Varnhold.app/Contents/Resources/daemon"));
    const std::string bundle = home.path() + "/./x/..//Varnhold.app";
    home.makeFolder(home.at("x"));
    EXPECT_EQ(resourcesOf(bundle), bundle + "/Contents/Resources/daemon");
}

TEST(DaemonResourcesPath, OtherwiseIsTheSiblingWhetherOrNotItExists) {
    const TemporaryHome home;
    const std::string root = fs::canonical(home.path());
    home.makeFolder(root + "/Varnhold.app/Contents");
    EXPECT_EQ(resourcesOf(root + "/Varnhold.app"), root + "/daemon");
    home.makeFolder(root + "/daemon");
    EXPECT_EQ(resourcesOf(root + "/Varnhold.app"), root + "/daemon");
    EXPECT_EQ(resourcesOf("/nonexistent/lib/varnhold"), "/nonexistent/lib/daemon");
}

TEST(DaemonResourcesPath, LooksAgainAtEveryUse) {
    const TemporaryHome home;
    const std::string bundle = home.at("Varnhold.app");
    EXPECT_TRUE(resourcesOf(bundle).ends_with("/daemon"));
    EXPECT_FALSE(resourcesOf(bundle).ends_with("/Contents/Resources/daemon"));
    home.makeFolder(bundle + "/Contents/Resources/daemon");
    EXPECT_EQ(resourcesOf(bundle), bundle + "/Contents/Resources/daemon");
}

TEST(Scripts, StandInTheDaemonCodesFolder) {
    FakePlatform fake;
    fake.bundle = "/opt/lib/varnhold";
    EXPECT_EQ(loginScript(fake.interfaces.system), "/opt/lib/daemon/login_scout.sh");
    EXPECT_EQ(autoSetupScript(fake.interfaces.system), "/opt/lib/daemon/auto_setup_chains.py");
}

TEST(EnsureAppSupportDirs, MakesThreeFoldersAndNothingElse) {
    const TemporaryHome home;
    const Constants constants(home.path());
    ensureAppSupportDirs(constants);
    std::set<std::string> made;
    for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
        made.insert(fs::relative(entry.path(), home.path()));
    }
    EXPECT_EQ(made, (std::set<std::string>{"Library", "Library/Application Support",
                                           "Library/Application Support/Varnhold",
                                           "Library/Application Support/Varnhold/data",
                                           "Library/Application Support/Varnhold/locks"}));
}

TEST(EnsureAppSupportDirs, FoldersThatAreThereKeepTheirContent) {
    const TemporaryHome home;
    const Constants constants(home.path());
    home.write(constants.appSupportDir + "/data/cos/note", "kept");
    ensureAppSupportDirs(constants);
    ensureAppSupportDirs(constants);
    EXPECT_EQ(home.read(constants.appSupportDir + "/data/cos/note"), "kept");
    EXPECT_TRUE(fs::is_directory(constants.appSupportDir + "/locks"));
}

TEST(EnsureAppSupportDirs, AHomeThatTakesNoFoldersIsLeftAsItIs) {
    const TemporaryHome home;
    home.write(home.at("Library"), "a file where a folder should be");
    ensureAppSupportDirs(Constants(home.path()));
    EXPECT_EQ(home.read(home.at("Library")), "a file where a folder should be");
    EXPECT_EQ(std::distance(fs::directory_iterator(home.path()), fs::directory_iterator()), 1);
}

TEST(EnsureAppSupportDirs, AFailureOnOneFolderDoesNotKeepTheNextFromBeingMade) {
    const TemporaryHome home;
    const Constants constants(home.path());
    home.write(constants.appSupportDir + "/data", "a file where a folder should be");
    ensureAppSupportDirs(constants);
    EXPECT_TRUE(fs::is_regular_file(constants.appSupportDir + "/data"));
    EXPECT_TRUE(fs::is_directory(constants.appSupportDir + "/locks"));
}

} // namespace
} // namespace varnhold
