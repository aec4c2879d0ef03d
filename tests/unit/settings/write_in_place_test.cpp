#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "settings_home.h"

// Where people keep their settings elsewhere and link to them, or keep others out, a save respects
// it.
namespace varnhold::testing {
namespace {

namespace fs = std::filesystem;

struct stat statusOf(const std::string& path) {
    struct stat found {};
    EXPECT_EQ(::stat(path.c_str(), &found), 0) << path;
    return found;
}

TEST(SaveInPlace, KeepsLinkInodeAndModeOfEveryFileButThePrompt) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();

    std::vector<std::string> paths = settings.savedFiles();
    std::erase(paths, settings.constants.promptFile);
    settings.home.makeFolder(settings.home.at("elsewhere"));
    for (const std::string& path : paths) {
        const std::string target =
            settings.home.at("elsewhere/" + fs::path(path).filename().string());
        fs::rename(path, target);
        ASSERT_EQ(::chmod(target.c_str(), 0600), 0);
        fs::create_symlink(target, path);
        const auto before = statusOf(target);
        settings.write(target, "old");

        view.save();
        EXPECT_TRUE(fs::is_symlink(path)) << path;
        EXPECT_EQ(fs::read_symlink(path), target);
        EXPECT_EQ(statusOf(target).st_ino, before.st_ino) << path;
        EXPECT_EQ(statusOf(target).st_mode & 07777U, 0600U) << path;
        EXPECT_NE(settings.read(target), "old") << path;
    }
}

TEST(SaveInPlace, KeepsHardLinks) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    view.save();
    fs::create_hard_link(settings.constants.botsConfigFile, settings.home.at("twin"));
    view.userBots.push_back(bot("ops"));
    view.save();
    EXPECT_EQ(settings.read(settings.home.at("twin")), encodeBots(view.userBots));
}

TEST(SaveInPlace, LeavesNothingOfALongerOldContent) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    settings.write(settings.constants.workerPrefsFile, std::string(100000, 'x'));
    view.save();
    EXPECT_EQ(settings.read(settings.constants.workerPrefsFile), "[]");
}

TEST(SaveInPlace, MakesTheTargetOfALinkToNothing) {
    SettingsHome settings;
    fs::create_symlink(settings.home.at("new"), settings.constants.workerPrefsFile);
    settings.open().save();
    EXPECT_EQ(settings.read(settings.home.at("new")), "[]");
}

TEST(SavePrompt, ReplacesTheFileAsAWholeAndKeepsItsMode) {
    SettingsHome settings;
    const std::string& path = settings.constants.promptFile;
    settings.write(path, "Old.");
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    fs::create_hard_link(path, settings.home.at("twin"));
    ModelSelectorView& view = settings.open();
    view.masterPrompt = "New.";
    view.save();
    EXPECT_EQ(settings.read(path), "New.");
    EXPECT_EQ(statusOf(path).st_mode & 07777U, 0600U);
    EXPECT_EQ(settings.read(settings.home.at("twin")), "Old."); // never half written over
}

TEST(SavePrompt, LeavesNoTemporaryFileBehind) {
    SettingsHome settings;
    ModelSelectorView& view = settings.open();
    fill(view);
    view.save();
    std::size_t entries = 0;
    for (const auto& entry : fs::directory_iterator(settings.constants.appSupportDir)) {
        static_cast<void>(entry);
        ++entries;
    }
    EXPECT_EQ(entries, settings.savedFiles().size());
}

} // namespace
} // namespace varnhold::testing
