#include <optional>
#include <string>
#include <vector>

#include "editing.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct RowDrops : Editing {
    RowDrops() {
        view->workerModels = {model("a", "A"), model("b", "B"), model("c", "C")};
        view->photoModels = {model("p", "P")};
    }

    std::string drag(const AIModelItem& item) { return view->modelRow(item).onDrag(); }
    void enter(std::size_t row) {
        view->chain(TargetList::worker).dropDelegate(view->workerModels[row])->dropEntered();
    }
    bool release(std::size_t row) {
        return view->chain(TargetList::worker).dropDelegate(view->workerModels[row])->performDrop();
    }
};

TEST(Drag, GivesTheUidAndMarksTheRow) {
    RowDrops settings;
    EXPECT_EQ(settings.drag(settings.view->workerModels[0]), "A");
    EXPECT_EQ(settings.drag(model("plain")), "plain");
    EXPECT_EQ(settings.view->draggingItem, model("plain"));
    EXPECT_TRUE(settings.view->modelRow(model("plain")).isDragging);
    EXPECT_FALSE(settings.view->modelRow(settings.view->workerModels[0]).isDragging);
}

TEST(Drag, MarksOnlyTheRowOfThatUidAmongSeveralOfOneModel) {
    RowDrops settings;
    settings.drag(model("a", "A"));
    EXPECT_TRUE(settings.view->modelRow(model("a", "A")).isDragging);
    EXPECT_FALSE(settings.view->modelRow(model("a", "ANOTHER")).isDragging);
    EXPECT_TRUE(settings.view->modelRow(model("renamed", "A")).isDragging);
}

TEST(Drag, ThatIsGivenUpEndsAfterTwoSecondsAndFadesIn) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    EXPECT_THAT(settings.platform.record, ElementsAre("post main after 2000"));
    settings.platform.advance(1999ms);
    EXPECT_TRUE(settings.view->draggingItem);
    settings.animations.clear();
    settings.platform.advance(1ms);
    EXPECT_FALSE(settings.view->draggingItem);
    EXPECT_THAT(settings.animations, ElementsAre(Animation::easeOut));
}

TEST(Drag, OutlivesTheTwoSecondsOfAnEarlierOne) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.platform.advance(1s);
    settings.drag(settings.view->workerModels[1]);
    settings.animations.clear();
    settings.platform.advance(1s);
    EXPECT_EQ(settings.view->draggingItem, settings.view->workerModels[1]);
    EXPECT_THAT(settings.animations, IsEmpty());
    settings.platform.advance(1s);
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(Drag, OfTheSameRowAgainEndsWithTheFirstTwoSeconds) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.platform.advance(1500ms);
    settings.drag(settings.view->workerModels[0]);
    settings.platform.advance(500ms);
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(Drag, ThatHasEndedIsNotEndedAgain) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.view->handleLibraryDrop({});
    settings.animations.clear();
    settings.platform.advance(2s);
    EXPECT_THAT(settings.animations, IsEmpty());
}

TEST(Drag, OfAStateThatHasGoneEndsNothing) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.view.reset();
    settings.platform.advance(2s);
    EXPECT_FALSE(settings.view);
}

TEST(RowDrop, ReordersLiveWithoutSaving) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.enter(1);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "a", "c"));
    settings.enter(2);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("b", "c", "a"));
    settings.enter(0);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(RowDrop, AnnouncesEachLiveStep) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.animations.clear();
    settings.enter(2);
    settings.enter(0);
    EXPECT_THAT(settings.animations, ElementsAre(Animation::none, Animation::none));
}

TEST(RowDrop, IsSavedWhereTheDraggedRowBelongs) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[2]);
    settings.enter(0);
    EXPECT_TRUE(settings.release(0));
    EXPECT_FALSE(settings.view->draggingItem);
    EXPECT_EQ(settings.newSaves(), 1);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("c", "a", "b"));
    EXPECT_EQ(settings.fileOf(TargetList::worker), encodeChain(settings.view->workerModels));
}

TEST(RowDrop, OfALibraryRowOrAnotherChainsRowInsertsNothing) {
    RowDrops settings;
    settings.view->directModels = {model("m")};
    for (const AIModelItem& item : {model("m"), settings.view->photoModels[0]}) {
        settings.drag(item);
        settings.enter(1);
        settings.animations.clear();
        EXPECT_FALSE(settings.release(1));
        EXPECT_FALSE(settings.view->draggingItem);
        EXPECT_THAT(settings.animations, ElementsAre(Animation::none));
    }
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("p"));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(RowDrop, EndsItsLiveReorderingWhenTheDragLastsTooLong) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[0]);
    settings.platform.advance(2s);
    settings.enter(2);
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b", "c"));
    EXPECT_FALSE(settings.release(2));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(RowDrop, OnTheDraggedRowItselfMovesNothing) {
    RowDrops settings;
    settings.drag(settings.view->workerModels[1]);
    settings.animations.clear();
    settings.enter(1);
    EXPECT_THAT(settings.animations, IsEmpty());
    EXPECT_TRUE(settings.release(1));
    EXPECT_EQ(settings.newSaves(), 1);
}

TEST(RowDrop, OnARowThatHasGoneMovesNothing) {
    RowDrops settings;
    auto target =
        *settings.view->chain(TargetList::worker).dropDelegate(settings.view->workerModels[2]);
    settings.drag(settings.view->workerModels[0]);
    settings.view->workerModels.pop_back();
    target.dropEntered();
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b"));
}

TEST(RowDrop, ProposesTheMoveOperation) {
    RowDrops settings;
    const auto row =
        *settings.view->chain(TargetList::worker).dropDelegate(settings.view->workerModels[0]);
    EXPECT_EQ(row.dropUpdated(), DropProposal::move);
}

TEST(RowDrop, WorksOnAnyListWithoutWatchers) {
    std::vector<AIModelItem> rows{model("x"), model("y")};
    std::optional<AIModelItem> dragging = rows[0];
    int saves = 0;
    RealTimeDropDelegate row{
        .item = rows[1], .list = rows, .draggingItem = dragging, .onSave = [&saves] { ++saves; }};
    row.dropEntered();
    EXPECT_EQ(rows[1].id, "x");
    EXPECT_TRUE(row.performDrop());
    EXPECT_FALSE(row.performDrop());
    EXPECT_EQ(saves, 1);
}

TEST(RowDrop, ReleasedOutsideAnyRowIsWrittenByTheNextSave) {
    RowDrops settings;
    settings.view->save();
    settings.drag(settings.view->workerModels[0]);
    settings.enter(2);
    EXPECT_EQ(settings.fileOf(TargetList::worker),
              encodeChain({model("a", "A"), model("b", "B"), model("c", "C")}));
    settings.platform.advance(2s);
    settings.view->save();
    EXPECT_EQ(settings.fileOf(TargetList::worker),
              encodeChain({model("b", "B"), model("c", "C"), model("a", "A")}));
}

} // namespace
} // namespace varnhold::testing
