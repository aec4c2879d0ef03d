#include "crew.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(GroupSheet, LeavesAddGroupDisabledForANameOfBlanksAlone) {
    Crew crew;
    for (const char* name : {"", " ", " \t ", "\u00A0\u200B\u3000"}) {
        crew.sheet.setNewGroupName(name);
        EXPECT_FALSE(crew.sheet.canAddGroup()) << name;
        crew.sheet.addGroup();
    }
    EXPECT_THAT(crew.groups, IsEmpty());
    EXPECT_EQ(crew.saves, 0);
}

TEST(GroupSheet, TakesALineBreakForAName) {
    Crew crew;
    crew.sheet.setNewGroupName(" \n ");
    EXPECT_TRUE(crew.sheet.canAddGroup());
    crew.sheet.addGroup();
    EXPECT_EQ(crew.groups[0].name, "\n");
}

TEST(GroupSheet, MakesAnEmptyGroupOfTheTrimmedNameAndClearsTheField) {
    Crew crew;
    crew.sheet.setNewGroupName("\t Night crew ");
    crew.sheet.addGroup();
    ASSERT_THAT(crew.groups, SizeIs(1));
    const CustomBotGroup& group = crew.groups[0];
    const CustomBotGroup expected{.id = group.id, .name = "Night crew", .colorHex = group.colorHex};
    EXPECT_EQ(group, expected);
    EXPECT_EQ(group.effortLevel, EffortLevel::off);
    EXPECT_EQ(group.contextTokens, 0);
    EXPECT_EQ(group.colorHex.size(), 6U);
    EXPECT_EQ(crew.input, "");
    EXPECT_EQ(crew.saves, 1);
}

TEST(GroupSheet, AllowsTwoGroupsOfOneNameEachWithAnIdentityOfItsOwn) {
    Crew crew;
    for (int i = 0; i < 2; ++i) {
        crew.sheet.setNewGroupName("Crew");
        crew.sheet.addGroup();
    }
    ASSERT_THAT(crew.groups, SizeIs(2));
    EXPECT_NE(crew.groups[0].id, crew.groups[1].id);
}

TEST(GroupSheet, SavesAtEachKeystrokeOfANewName) {
    Crew crew;
    const Uuid id = crew.make().id;
    for (const char* name : {"C", "Cr", ""}) {
        crew.sheet.rename(id, name);
        EXPECT_EQ(crew.groups[0].name, name);
    }
    EXPECT_EQ(crew.saves, 3);
    crew.sheet.rename(id, "");
    crew.sheet.rename(Uuid::random(), "x");
    EXPECT_EQ(crew.saves, 3);
}

TEST(GroupSheet, DeletesWithoutAskingAndLeavesTheOthersInTheirOrder) {
    Crew crew;
    crew.make({"1"});
    crew.make({"2"});
    crew.make({"3"});
    crew.sheet.remove(crew.groups[1].id);
    ASSERT_THAT(crew.groups, SizeIs(2));
    EXPECT_THAT(Crew::uids(crew.groups[0]), ElementsAre("1"));
    EXPECT_THAT(Crew::uids(crew.groups[1]), ElementsAre("3"));
    EXPECT_EQ(crew.saves, 1);
}

TEST(GroupSheet, IsDismissedWithoutASave) {
    Crew crew;
    crew.sheet.onDismiss();
    EXPECT_EQ(crew.dismissals, 1);
    EXPECT_EQ(crew.saves, 0);
}

} // namespace
} // namespace varnhold::testing
