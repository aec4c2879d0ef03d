#include <string>

#include "crew.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

struct Dragging : Crew {
    CustomBotGroup& group = make({"a", "b", "c", "d"});

    void drag(const std::string& uid) {
        EXPECT_EQ(column->startDrag(model("id-" + uid, uid)), uid);
    }
    [[nodiscard]] CustomGroupDropDelegate over(const std::string& uid) {
        return column->dropDelegate(group.id, model("id-" + uid, uid));
    }
};

TEST(ReorderModels, MovesTheRowToThePlaceOfTheOneItEntersDownAndUp) {
    Dragging crew;
    crew.drag("a");
    crew.over("c").dropEntered();
    EXPECT_THAT(Crew::uids(crew.group), ElementsAre("b", "c", "a", "d"));
    crew.over("b").dropEntered();
    EXPECT_THAT(Crew::uids(crew.group), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(crew.saves, 0);
    EXPECT_EQ(crew.changes, 3) << "the drag, and each step";
}

TEST(ReorderModels, SavesWhereTheRowIsDropped) {
    Dragging crew;
    crew.drag("a");
    crew.over("b").dropEntered();
    EXPECT_TRUE(crew.over("a").performDrop());
    EXPECT_EQ(crew.saves, 1);
    EXPECT_FALSE(crew.column->draggingModel());
    EXPECT_FALSE(crew.over("a").performDrop());
    EXPECT_EQ(crew.saves, 1);
}

TEST(ReorderModels, LeavesAloneWhatComesFromElsewhereOrEntersItself) {
    Dragging crew;
    crew.over("b").dropEntered(); // nothing is dragged
    crew.drag("a");
    crew.over("a").dropEntered();
    crew.over("gone").dropEntered();
    crew.column->dropDelegate(Uuid::random(), model("id-b", "b")).dropEntered();
    crew.drag("library-row");
    crew.over("b").dropEntered();
    EXPECT_FALSE(crew.over("b").performDrop());
    EXPECT_FALSE(crew.column->draggingModel());
    EXPECT_THAT(Crew::uids(crew.group), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(crew.saves, 0);
}

TEST(ReorderModels, DropsNothingOnAGroupThatHasGone) {
    Dragging crew;
    crew.drag("a");
    const CustomGroupDropDelegate row = crew.over("a");
    crew.groups.clear();
    EXPECT_FALSE(row.performDrop());
    EXPECT_EQ(crew.saves, 0);
}

TEST(ReorderModels, ProposesToMove) {
    Dragging crew;
    EXPECT_EQ(crew.over("a").dropUpdated(), DropProposal::move);
}

TEST(DragOfAGroupsRow, CountsAsOverAfterHalfASecond) {
    Dragging crew;
    crew.drag("a");
    crew.platform.advance(499ms);
    EXPECT_TRUE(crew.column->draggingModel());
    crew.platform.advance(1ms);
    EXPECT_FALSE(crew.column->draggingModel());
}

TEST(DragOfAGroupsRow, IsNotEndedByTheOneBefore) {
    Dragging crew;
    crew.drag("a");
    crew.platform.advance(400ms);
    crew.drag("b");
    crew.platform.advance(100ms);
    ASSERT_TRUE(crew.column->draggingModel());
    EXPECT_EQ(crew.column->draggingModel()->uid(), "b");
    crew.platform.advance(400ms);
    EXPECT_FALSE(crew.column->draggingModel());
}

TEST(DragOfAGroupsRow, MayOutliveTheColumn) {
    Dragging crew;
    crew.drag("a");
    crew.column.reset();
    crew.platform.advance(1s);
    EXPECT_EQ(crew.platform.elapsed(), 1s);
}

} // namespace
} // namespace varnhold::testing
