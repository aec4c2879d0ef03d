#include "shell/migration.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "shell/daemon_code.h"
#include "support/temporary_home.h"

namespace varnhold {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> migrated{
    "bots.json",
    "auth_config.json",
    "model_library.json",
    "model_preferences.json",
    "architect_preferences.json",
    "worker_preferences.json",
    "photo_preferences.json",
    "video_preferences.json",
    "governor_preferences.json",
    ".preferred-provider.json",
    "effort_preferences.json",
    "context_preferences.json",
    "manager_preferences.json",
    "custom_groups.json",
    "PROMPT.md",
};

const std::vector<std::string> leftBehind{
    "voice_preferences.json", "response_mode.json", "chain_bot_assignments.json",
    "reauth_alerts.json",     "governor.db",        "icon.png",
    "keepsake.txt",           "bots.json.bak",
};

class Migration : public ::testing::Test {
protected:
    Migration() { ensureAppSupportDirs(constants); }

    [[nodiscard]] std::string oldPath(const std::string& name) const {
        return home.at("Library/Application Support/OstrelleAI/shared/" + name);
    }
    [[nodiscard]] std::string newPath(const std::string& name) const {
        return constants.appSupportDir + "/" + name;
    }
    void writeOld(const std::string& name, const std::string& content) const {
        home.write(oldPath(name), content);
    }
    [[nodiscard]] std::set<std::string> newFiles() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(constants.appSupportDir)) {
            names.insert(entry.path().filename());
        }
        names.erase("data");
        names.erase("locks");
        return names;
    }

    testing::TemporaryHome home;
    Constants constants{home.path()};
};

TEST_F(Migration, WithoutAnOldFolderNothingHappens) {
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(newFiles().empty());
}

TEST_F(Migration, CopiesExactlyTheFifteenListedFiles) {
    for (const std::string& name : migrated) {
        writeOld(name, "old " + name);
    }
    for (const std::string& name : leftBehind) {
        writeOld(name, "old " + name);
    }
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(migrated.size(), 15U);
    EXPECT_EQ(newFiles(), std::set<std::string>(migrated.begin(), migrated.end()));
    for (const std::string& name : migrated) {
        EXPECT_EQ(home.read(newPath(name)), "old " + name);
    }
}

TEST_F(Migration, TheOldFolderIsLeftAsItWas) {
    for (const std::string& name : migrated) {
        writeOld(name, "old " + name);
    }
    migrateFromLegacyPathIfNeeded(constants);
    for (const std::string& name : migrated) {
        EXPECT_EQ(home.read(oldPath(name)), "old " + name);
    }
}

TEST_F(Migration, ANewBotsFileMeansThatItHasHappened) {
    writeOld("bots.json", "old");
    writeOld("PROMPT.md", "old");
    home.write(newPath("bots.json"), "[]");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(newPath("bots.json")), "[]");
    EXPECT_EQ(newFiles(), std::set<std::string>{"bots.json"});
}

TEST_F(Migration, AnythingInThePlaceOfTheNewBotsFileCounts) {
    writeOld("PROMPT.md", "old");
    home.makeFolder(newPath("bots.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(newFiles(), std::set<std::string>{"bots.json"});
}

TEST_F(Migration, ANewSignInFileStaysAndTheOthersAreCopied) {
    for (const std::string& name : migrated) {
        writeOld(name, "old");
    }
    home.write(newPath("auth_config.json"), "new");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(newPath("auth_config.json")), "new");
    EXPECT_EQ(newFiles().size(), 15U);
    EXPECT_EQ(home.read(newPath("bots.json")), "old");
}

TEST_F(Migration, WithoutAnOldBotsFileTheNextLaunchFillsInWhatIsStillMissing) {
    writeOld("auth_config.json", "old");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(newFiles(), std::set<std::string>{"auth_config.json"});

    home.write(newPath("auth_config.json"), "edited since");
    writeOld("PROMPT.md", "late");
    writeOld("bots.json", "[]");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(newPath("auth_config.json")), "edited since");
    EXPECT_EQ(home.read(newPath("PROMPT.md")), "late");
    EXPECT_EQ(home.read(newPath("bots.json")), "[]");
}

TEST_F(Migration, ThePromptArrivesWhereTheProgramLooksForIt) {
    writeOld("PROMPT.md", "be kind");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(constants.promptFile), "be kind");
}

TEST_F(Migration, AFolderAtASourceIsCopiedWhole) {
    writeOld("custom_groups.json/deep/er", "x");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(newPath("custom_groups.json/deep/er")), "x");
}

TEST_F(Migration, AFolderAtATargetIsNotFilled) {
    writeOld("custom_groups.json/a", "x");
    home.makeFolder(newPath("custom_groups.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(fs::is_empty(newPath("custom_groups.json")));
}

TEST_F(Migration, AfterAFirstBotIsSavedALateOldFolderHasNoEffect) {
    migrateFromLegacyPathIfNeeded(constants);
    home.write(constants.botsConfigFile, "[{}]");
    writeOld("PROMPT.md", "old");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(newFiles(), std::set<std::string>{"bots.json"});
}

TEST_F(Migration, ACopyThatFailsIsPassedOverAndTheOthersStillCome) {
    writeOld("bots.json", "[]");
    writeOld("auth_config.json", "old");
    writeOld("PROMPT.md", "old");
    // A dangling link doesn't exist for the test, and yet nothing can be copied over it.
    fs::create_symlink("missing", newPath("auth_config.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(fs::is_symlink(newPath("auth_config.json")));
    EXPECT_FALSE(fs::exists(newPath("missing")));
    EXPECT_EQ(home.read(newPath("PROMPT.md")), "old");
    EXPECT_EQ(home.read(newPath("bots.json")), "[]");
}

TEST_F(Migration, AnUncopiedBotsFileIsTriedAgainAtTheNextLaunch) {
    writeOld("bots.json", "[]");
    fs::create_symlink("missing", newPath("bots.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(fs::is_symlink(newPath("bots.json")));
    fs::remove(newPath("bots.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(home.read(newPath("bots.json")), "[]");
}

TEST_F(Migration, ALinkComesOverAsALink) {
    writeOld("elsewhere.json", "[]");
    fs::create_symlink(oldPath("elsewhere.json"), oldPath("bots.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_EQ(fs::read_symlink(newPath("bots.json")), oldPath("elsewhere.json"));
}

TEST_F(Migration, ADanglingLinkInTheOldFolderIsNothing) {
    home.makeFolder(oldPath(""));
    fs::create_symlink("missing", oldPath("bots.json"));
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(newFiles().empty());
}

TEST_F(Migration, PermissionsComeAlong) {
    writeOld("auth_config.json", "{}");
    ::chmod(oldPath("auth_config.json").c_str(), 0600);
    migrateFromLegacyPathIfNeeded(constants);
    struct stat found {};
    ASSERT_EQ(::stat(newPath("auth_config.json").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
}

TEST_F(Migration, AFileInThePlaceOfTheOldFolderBringsNothing) {
    home.write(home.at("Library/Application Support/OstrelleAI/shared"), "not a folder");
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_TRUE(newFiles().empty());
}

TEST_F(Migration, WithoutAFolderToCopyIntoNothingIsMade) {
    writeOld("bots.json", "[]");
    fs::remove_all(constants.appSupportDir);
    migrateFromLegacyPathIfNeeded(constants);
    EXPECT_FALSE(fs::exists(constants.appSupportDir));
}

} // namespace
} // namespace varnhold
