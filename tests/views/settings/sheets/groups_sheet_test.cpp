#include <functional>
#include <string>
#include <vector>

#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

struct GroupsSheet : ::testing::Test, ShownSheets {
    void open() { model->openManageCustomGroups(); }
    [[nodiscard]] std::vector<std::string> namesOnDisk() const {
        std::vector<std::string> names;
        for (const CustomBotGroup& group : valueOrEmpty(readGroups(constants.customGroupsFile))) {
            names.push_back(group.name);
        }
        return names;
    }
};

TEST_F(GroupsSheet, SaysThatThereAreNoneAndBeginsWithANewName) {
    show();
    open();
    EXPECT_TRUE(shows("Custom Groups"));
    EXPECT_TRUE(shows("No groups yet. Add one below."));
    EXPECT_EQ(focusedName(), "New group name");
    EXPECT_EQ(valueOf("New group name", "placeholder"), "New group name…");
}

TEST_F(GroupsSheet, MakesAGroupWithoutTheBlanksAroundItsName) {
    show();
    open();
    type(QStringLiteral("  Crew "));
    click("Add Group");
    EXPECT_THAT(namesOnDisk(), ElementsAre("Crew"));
    EXPECT_EQ(valueOf("New group name"), "");
    EXPECT_FALSE(shows("No groups yet. Add one below."));
    EXPECT_EQ(valueOf("Group name"), "Crew");
    EXPECT_EQ(saves(), 1);
}

TEST_F(GroupsSheet, AddsByEnterWhatIsNamedAndIsDoneByTheNext) {
    show();
    open();
    for (const char* name : {"One", "Two"}) {
        type(QString::fromUtf8(name));
        press(Qt::Key_Return);
    }
    EXPECT_THAT(namesOnDisk(), ElementsAre("One", "Two"));
    EXPECT_EQ(saves(), 2);
    EXPECT_TRUE(shows("Custom Groups"));
    press(Qt::Key_Return);
    EXPECT_FALSE(shows("Custom Groups"));
    EXPECT_EQ(saves(), 2);
}

TEST_F(GroupsSheet, TakesTheNextNameRightAfterOneWasAdded) {
    show();
    open();
    for (const char* name : {"One", "Two"}) {
        type(QString::fromUtf8(name));
        click("Add Group");
    }
    EXPECT_THAT(namesOnDisk(), ElementsAre("One", "Two"));
}

TEST_F(GroupsSheet, ANameOfBlanksAloneCannotBeAdded) {
    show();
    open();
    EXPECT_FALSE(isEnabled("Add Group"));
    type(QStringLiteral("   "));
    EXPECT_FALSE(isEnabled("Add Group"));
    type(QStringLiteral("x"));
    EXPECT_TRUE(isEnabled("Add Group"));
}

TEST_F(GroupsSheet, AllowsTwoGroupsOfOneName) {
    view->customGroups = {CustomBotGroup{.name = "Crew"}};
    show();
    open();
    click("New group name");
    type(QStringLiteral("Crew"));
    click("Add Group");
    EXPECT_THAT(namesOnDisk(), ElementsAre("Crew", "Crew"));
}

TEST_F(GroupsSheet, SavesARenamingWithEachKeyAndKeepsTheCursor) {
    view->customGroups = {CustomBotGroup{.name = "Crw"}, CustomBotGroup{.name = "Other"}};
    show();
    open();
    EXPECT_EQ(focusedName(), "New group name");
    click("Group name");
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    type(QStringLiteral("ee"));
    EXPECT_THAT(namesOnDisk(), ElementsAre("Creew", "Other"));
    EXPECT_EQ(saves(), 2);
    press(Qt::Key_Backspace);
    EXPECT_THAT(namesOnDisk(), ElementsAre("Crew", "Other"));
    EXPECT_EQ(saves(), 3);
}

TEST_F(GroupsSheet, DeletesWithoutAsking) {
    view->customGroups = {CustomBotGroup{.name = "One"}, CustomBotGroup{.name = "Two"}};
    show();
    open();
    click("Delete One");
    EXPECT_THAT(namesOnDisk(), ElementsAre("Two"));
    EXPECT_EQ(saves(), 1);
    EXPECT_FALSE(shows("Delete One"));
    EXPECT_EQ(focusedName(), "New group name"); // the button that had the focus is gone
}

TEST_F(GroupsSheet, TheLastGroupComesBack) {
    view->customGroups = {CustomBotGroup{.name = "One"}};
    view->save();
    show();
    open();
    click("Delete One");
    EXPECT_TRUE(shows("No groups yet. Add one below."));
    platform.settle();
    EXPECT_TRUE(shows("Delete One"));
    EXPECT_THAT(namesOnDisk(), ElementsAre("One"));
}

TEST_F(GroupsSheet, IsDoneByItsButtonByEnterAndByEscapeAndSavesNothingThen) {
    show();
    for (const auto& done : std::vector<std::function<void()>>{[this] { click("Done"); },
                                                               [this] { press(Qt::Key_Return); },
                                                               [this] { press(Qt::Key_Escape); }}) {
        open();
        ASSERT_TRUE(shows("Custom Groups"));
        done();
        EXPECT_FALSE(view->showManageGroupsSheet);
        EXPECT_FALSE(shows("Custom Groups"));
    }
    EXPECT_EQ(saves(), 0);
}

TEST_F(GroupsSheet, KeepsAHalfTypedNameForTheNextTime) {
    show();
    open();
    type(QStringLiteral("Cre"));
    click("Done");
    open();
    EXPECT_EQ(valueOf("New group name"), "Cre");
}

TEST_F(GroupsSheet, ScrollsManyGroupsAndKeepsItsButtons) {
    for (int i = 0; i < 60; ++i) {
        view->customGroups.push_back(CustomBotGroup{.name = "Group " + std::to_string(i)});
    }
    show();
    open();
    EXPECT_EQ(model->sheets()->manageGroups()->groups()->count(), 60);
    focus("Delete Group 59");
    press(Qt::Key_Space);
    EXPECT_THAT(view->customGroups, SizeIs(59));
    click("Done");
    EXPECT_EQ(model->sheets()->standing(), QString());
}

TEST_F(GroupsSheet, ShowsANameOfDataAsItStands) {
    view->customGroups = {CustomBotGroup{.name = "<b>&amp;</b>"}};
    show();
    open();
    EXPECT_EQ(valueOf("Group name"), "<b>&amp;</b>");
}

} // namespace
} // namespace varnhold::testing
