#include "settings/groups_wiring.h"

#include <optional>
#include <string>
#include <vector>

#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

platform::PayloadProviders dropped(const std::string& text) {
    return {platform::textPayload(text)};
}

TEST(GroupsOfTheWindow, AreMadeInTheSheetAndSaved) {
    Window window;
    ModelSelectorView& view = *window.view;
    openManageCustomGroups(view);
    EXPECT_TRUE(view.showManageGroupsSheet);
    const ManageCustomGroupsSheet sheet = view.groupsSheet();
    sheet.setNewGroupName(" Crew ");
    sheet.addGroup();
    sheet.onDismiss();
    EXPECT_FALSE(view.showManageGroupsSheet);
    EXPECT_EQ(view.newGroupNameInput, "");
    EXPECT_THAT(*readGroups(window.constants.customGroupsFile), SizeIs(1));
    EXPECT_EQ(view.customGroups[0].name, "Crew");
}

TEST(GroupsOfTheWindow, TakeModelsOfAnyTypeFromTheWholeLibraryAndShowThem) {
    Window window;
    ModelSelectorView& view = *window.view;
    AIModelItem api = model("api");
    api.type = "api";
    view.allLibraryModels = {api};
    view.customGroups = {CustomBotGroup{.name = "Crew"}};
    view.draggingItem = api;
    std::vector<Animation> seen;
    view.observe([&](Animation animation) { seen.push_back(animation); });
    CustomGroupsColumn column = view.groupsColumn();
    EXPECT_TRUE(column.handleDrop(dropped("api"), view.customGroups[0].id));
    window.platform.settle();
    EXPECT_EQ(view.draggingItem, std::nullopt);
    ASSERT_THAT(view.customGroups[0].models, SizeIs(1));
    EXPECT_THAT(seen, Not(IsEmpty()));
    EXPECT_EQ(*readGroups(window.constants.customGroupsFile), view.customGroups);
    EXPECT_EQ(window.saves(), 1);
}

TEST(GroupsOfTheWindow, SeeBotsThatCameAfterTheColumnWasMade) {
    Window window;
    ModelSelectorView& view = *window.view;
    view.customGroups = {CustomBotGroup{.name = "Crew"}};
    CustomGroupsColumn column = view.groupsColumn();
    window.add(bot("ops"));
    column.stack(view.customGroups[0].id).dropBots(dropped("com.ostrelleai.ops.telegramd"));
    window.platform.settle();
    EXPECT_THAT(view.customGroups[0].assignedBotLabels,
                ElementsAre("com.ostrelleai.ops.telegramd"));
    EXPECT_THAT(column.stack(view.customGroups[0].id).bots(), SizeIs(1));
}

TEST(GroupsOfTheWindow, ReachTheEndsOfTheProgramsOwnLadder) {
    Window window;
    ModelSelectorView& view = *window.view;
    view.customGroups = {CustomBotGroup{.name = "Crew"}};
    CustomGroupsColumn column = view.groupsColumn();
    for (int i = 0; i < 20; ++i) {
        column.stack(view.customGroups[0].id).stepContext(StepDirection::right);
    }
    EXPECT_EQ(view.customGroups[0].contextTokens, 2000000);
}

TEST(GroupsOfTheWindow, ComeBackWhenTheLastOneIsDeleted) {
    Window window;
    ModelSelectorView& view = *window.view;
    view.customGroups = {CustomBotGroup{.name = "Crew"}};
    view.save();
    const auto before = view.customGroups;
    view.groupsSheet().remove(before[0].id);
    EXPECT_THAT(view.customGroups, ::testing::IsEmpty());
    window.platform.settle();
    EXPECT_EQ(view.customGroups, before);
}

} // namespace
} // namespace varnhold::testing
