#include <cmath>
#include <filesystem>
#include <string>

#include "base/files.h"
#include "settings_home.h"

namespace varnhold::testing {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

// A folder whose file of groups has a given content, and the path of its backup.
struct Guard : SettingsHome {
    const std::string path = constants.customGroupsFile;
    const std::string backup = path + ".bak";

    static CustomBotGroup group(const std::string& name) {
        return {.id = *Uuid::parse("46717E56-E629-5AE3-8B57-A557FDE5BD65"),
                .name = name,
                .colorHex = "FFD6D6"};
    }
    static std::string named(const std::string& name) {
        return encodeGroups({group(name)}).value();
    }
};

TEST(GroupsGuard, BringsTheOnlyGroupBackAfterItsDeletionAndLeavesTheFile) {
    Guard settings;
    settings.write(settings.path, Guard::named("only"));
    ModelSelectorView& view = settings.open();
    int changes = 0;
    view.customGroups.clear();
    view.save();
    view.observe([&](Animation) { ++changes; });
    EXPECT_THAT(view.customGroups, IsEmpty()); // until the next turn of the main queue
    settings.platform.runMain();
    EXPECT_THAT(view.customGroups, SizeIs(1));
    EXPECT_EQ(view.customGroups.front().name, "only");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(settings.read(settings.path), Guard::named("only"));
    EXPECT_FALSE(files::exists(settings.backup));
}

TEST(GroupsGuard, KeepsInTheBackupWhatStoodBeforeTheFirstSave) {
    Guard settings;
    settings.write(settings.path, Guard::named("before"));
    ModelSelectorView& view = settings.open();
    view.customGroups = {Guard::group("first")};
    view.save();
    view.customGroups = {Guard::group("second")};
    view.save();
    EXPECT_EQ(settings.read(settings.backup), Guard::named("before"));
    EXPECT_EQ(settings.read(settings.path), Guard::named("second"));
}

TEST(GroupsGuard, HasNothingToBackUpAtTheFirstSaveOfAll) {
    Guard settings;
    ModelSelectorView& view = settings.open();
    view.customGroups = {Guard::group("first")};
    view.save();
    EXPECT_FALSE(files::exists(settings.backup));
    view.customGroups = {Guard::group("second")};
    view.save();
    EXPECT_EQ(settings.read(settings.backup), Guard::named("first"));
}

TEST(GroupsGuard, NeverWritesAnEmptyList) {
    for (const char* content : {"", "[]", "[ ]", "[{\"id\":1}]", "no JSON at all"}) {
        Guard settings;
        settings.write(settings.path, content);
        ModelSelectorView& view = settings.open();
        view.save();
        settings.platform.settle();
        EXPECT_THAT(view.customGroups, IsEmpty()) << content;
        EXPECT_EQ(settings.read(settings.path), content);
        EXPECT_FALSE(files::exists(settings.backup)) << content;
    }
}

TEST(GroupsGuard, DoesNotCreateTheFileWithoutGroups) {
    Guard settings;
    settings.open().save();
    EXPECT_FALSE(files::exists(settings.path));
}

TEST(GroupsGuard, WritesTheBackupsGroupsOverABrokenFileAtTheNextSave) {
    Guard settings;
    settings.write(settings.path, "[{\"broken\":");
    settings.write(settings.backup, Guard::named("backup"));
    settings.open().save();
    EXPECT_EQ(settings.read(settings.path), Guard::named("backup"));
    EXPECT_EQ(settings.read(settings.backup), Guard::named("backup"));
}

TEST(GroupsGuard, BacksABrokenFileUpBeforeTheFirstGroupReplacesIt) {
    Guard settings;
    settings.write(settings.path, "[{\"broken\":");
    ModelSelectorView& view = settings.open();
    view.customGroups = {Guard::group("new")};
    view.save();
    EXPECT_EQ(settings.read(settings.backup), "[{\"broken\":");
    EXPECT_EQ(settings.read(settings.path), Guard::named("new"));
}

TEST(GroupsGuard, LeavesFileAndBackupAloneForABudgetThatCannotBeWritten) {
    Guard settings;
    settings.write(settings.path, Guard::named("before"));
    ModelSelectorView& view = settings.open();
    view.customGroups.front().contextTokens = std::nan("");
    view.save();
    EXPECT_EQ(settings.read(settings.path), Guard::named("before"));
    EXPECT_FALSE(files::exists(settings.backup));
}

TEST(GroupsGuard, BacksALinkUpAsALink) {
    Guard settings;
    const std::string target = settings.home.at("elsewhere");
    settings.write(target, Guard::named("before"));
    std::filesystem::create_symlink(target, settings.path);
    ModelSelectorView& view = settings.open();
    view.customGroups = {Guard::group("new")};
    view.save();
    EXPECT_TRUE(std::filesystem::is_symlink(settings.backup));
    EXPECT_EQ(settings.read(target), Guard::named("new"));
}

TEST(GroupsGuard, DoesNotReplaceADanglingLinkAtTheBackup) {
    Guard settings;
    settings.write(settings.path, Guard::named("before"));
    std::filesystem::create_symlink("nothing", settings.backup);
    ModelSelectorView& view = settings.open();
    view.save();
    EXPECT_TRUE(std::filesystem::is_symlink(settings.backup));
    EXPECT_FALSE(files::exists(settings.backup));
}

TEST(GroupsGuard, ForgetsToBringGroupsBackOnceTheStateHasGone) {
    Guard settings;
    settings.write(settings.path, Guard::named("only"));
    settings.open().customGroups.clear();
    settings.view->save();
    settings.view.reset();
    settings.platform.settle();
    EXPECT_EQ(settings.read(settings.path), Guard::named("only"));
}

} // namespace
} // namespace varnhold::testing
