#include "crew.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(DropBots, AssignsAKnownBotOnce) {
    Crew crew;
    crew.bots = {bot("a"), bot("b")};
    const Uuid id = crew.make().id;
    for (const std::string& label :
         {labelOf("b"), labelOf("b"), std::string("nobody"), std::string()}) {
        EXPECT_TRUE(crew.column->stack(id).dropBots(dropped(label)));
        crew.platform.settle();
    }
    EXPECT_THAT(crew.groups[0].assignedBotLabels, ElementsAre(labelOf("b")));
    EXPECT_EQ(crew.saves, 1);
}

TEST(DropBots, ListsThemInTheOrderOfTheBotColumn) {
    Crew crew;
    crew.bots = {bot("a"), bot("b")};
    CustomBotGroup& group = crew.make();
    group.assignedBotLabels = {labelOf("b"), "gone", labelOf("a")};
    EXPECT_THAT(crew.column->stack(group.id).bots(), ElementsAre(crew.bots[0], crew.bots[1]));
}

TEST(DropBots, LetsABotStandInSeveralGroups) {
    Crew crew;
    crew.bots = {bot("a")};
    crew.make();
    crew.make();
    for (const CustomBotGroup& group : crew.groups) {
        crew.column->stack(group.id).dropBots(dropped(labelOf("a")));
    }
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].assignedBotLabels, SizeIs(1));
    EXPECT_THAT(crew.groups[1].assignedBotLabels, SizeIs(1));
}

TEST(DropBots, RemovesEveryEntryOfTheLabel) {
    Crew crew;
    CustomBotGroup& group = crew.make();
    group.assignedBotLabels = {"x", "y", "x"};
    crew.column->stack(group.id).unassignBot(group.assignedBotLabels[0]);
    EXPECT_THAT(group.assignedBotLabels, ElementsAre("y"));
    EXPECT_EQ(crew.saves, 1);
    crew.column->stack(Uuid::random()).unassignBot("y");
    EXPECT_EQ(crew.saves, 1);
}

TEST(DropModel, IsTakenFromItsOwnRowsByIdentityAndFromTheLibrary) {
    Crew crew;
    crew.library = {model("m", "ROW")};
    const Uuid id = crew.make({"own"}).id;
    const Stack stack = crew.column->stack(id);
    EXPECT_TRUE(stack.takesModel("own"));
    EXPECT_FALSE(stack.takesModel("id-own")) << "by its id";
    EXPECT_TRUE(stack.takesModel("ROW"));
    EXPECT_FALSE(stack.takesModel("nothing"));
    EXPECT_FALSE(crew.column->stack(Uuid::random()).takesModel("ROW")) << "the group has gone";
}

TEST(DropModel, OfALibraryRowWithAUniqueIdTwiceInsertsItTwiceWithFreshOnes) {
    Crew crew;
    crew.library = {model("m", "ROW")};
    const Uuid id = crew.make().id;
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(crew.column->handleDrop(dropped("ROW"), id));
        crew.platform.settle();
    }
    const CustomBotGroup& group = crew.groups[0];
    ASSERT_THAT(group.models, SizeIs(2));
    EXPECT_NE(group.models[0].uid(), group.models[1].uid());
    for (const AIModelItem& model : group.models) {
        ASSERT_TRUE(Uuid::parse(model.uid()));
        EXPECT_EQ(Uuid::parse(model.uid())->text(), model.uid());
        EXPECT_EQ(model.id, "m");
    }
    EXPECT_EQ(crew.saves, 2);
    EXPECT_EQ(crew.changes, 4) << "the end of each drag, and each new row";
}

TEST(DropModel, OfALibraryRowWithoutAUniqueIdIsRefusedTheSecondTime) {
    Crew crew;
    crew.library = {model("m")};
    const Uuid id = crew.make().id;
    for (int i = 0; i < 2; ++i) {
        crew.column->handleDrop(dropped("m"), id);
        crew.platform.settle();
    }
    EXPECT_THAT(crew.groups[0].models, SizeIs(1));
    EXPECT_EQ(crew.saves, 1);
}

TEST(DropModel, OfAChainRowDoesNothingUnlessItHasNoUniqueId) {
    Crew crew;
    crew.library = {model("m", "ROW")};
    const Uuid id = crew.make().id;
    crew.column->handleDrop(dropped("CHAIN-ENTRY"), id);
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, IsEmpty());
    EXPECT_EQ(crew.saves, 0);
    crew.column->handleDrop(dropped("m"), id); // an entry without one gives its model's id
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, SizeIs(1));
}

TEST(DropModel, PutsItAtTheHeadOnTheStripAndAtTheEndOnTheArea) {
    Crew crew;
    crew.library = {model("a"), model("b"), model("c")};
    const Uuid id = crew.make({"x"}).id;
    crew.column->handleDrop(dropped("a"), id);
    crew.column->handleDrop(dropped("b"), id, 0);
    crew.column->handleDrop(dropped("c"), id, 99);
    crew.platform.settle();
    std::vector<std::string> ids;
    for (const AIModelItem& model : crew.groups[0].models) {
        ids.push_back(model.id);
    }
    EXPECT_THAT(ids, ElementsAre("b", "id-x", "a", "c"));
}

TEST(DropModel, TakesTheFirstOfTwoLibraryEntriesThatMatch) {
    Crew crew;
    crew.library = {model("m", "one"), model("m", "two")};
    crew.library[0].name = "First";
    const Uuid id = crew.make().id;
    crew.column->handleDrop(dropped("m"), id);
    crew.platform.settle();
    EXPECT_EQ(crew.groups[0].models[0].name, "First");
}

TEST(DropModel, OfAnEmptyTextOrOfNoTextDoesNothing) {
    Crew crew;
    crew.library = {model("")};
    const Uuid id = crew.make().id;
    crew.column->handleDrop(dropped(""), id);
    crew.column->handleDrop({[](const auto& receiver) { receiver(std::nullopt); }}, id);
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, IsEmpty());
}

TEST(DropModel, OnAGroupThatHasGoneIsDropped) {
    Crew crew;
    crew.library = {model("m")};
    const Uuid id = crew.make().id;
    crew.column->handleDrop(dropped("m"), id);
    crew.groups.clear();
    crew.platform.settle();
    EXPECT_EQ(crew.saves, 0);
}

TEST(DropModel, EndsTheDragLaterButBeforeAnyTextIsHandled) {
    Crew crew;
    crew.library = {model("m")};
    const Uuid id = crew.make().id;
    static_cast<void>(crew.column->startDrag(model("m")));
    crew.column->handleDrop(dropped("m"), id);
    EXPECT_TRUE(crew.column->draggingModel());
    EXPECT_EQ(crew.clears, 0);
    crew.platform.settle();
    EXPECT_FALSE(crew.column->draggingModel());
    EXPECT_EQ(crew.clears, 1);
}

TEST(DropModel, HandlesATextThatArrivesLateAndOnAnotherThread) {
    Crew crew;
    crew.library = {model("m")};
    const Uuid id = crew.make().id;
    platform::PayloadReceiver late;
    crew.column->handleDrop({[&late](auto receiver) { late = std::move(receiver); }}, id);
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, IsEmpty());
    std::thread([&late] { late("m"); }).join();
    EXPECT_THAT(crew.groups[0].models, IsEmpty());
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, SizeIs(1));
}

TEST(DropModel, DropsATextThatArrivesAfterTheColumnHasGone) {
    Crew crew;
    crew.library = {model("m")};
    const Uuid id = crew.make().id;
    platform::PayloadReceiver late;
    crew.column->handleDrop({[&late](auto receiver) { late = std::move(receiver); }}, id);
    crew.column.reset();
    late("m");
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, IsEmpty());
    EXPECT_EQ(crew.clears, 0);
}

TEST(DropModel, HandlesEveryTextOfOneDrop) {
    Crew crew;
    crew.library = {model("a"), model("b")};
    const Uuid id = crew.make().id;
    crew.column->handleDrop({platform::textPayload("a"), platform::textPayload("b")}, id);
    crew.platform.settle();
    EXPECT_THAT(crew.groups[0].models, SizeIs(2));
    EXPECT_EQ(crew.clears, 1);
}

TEST(RemoveModel, TakesEveryRowWithThatIdentity) {
    Crew crew;
    CustomBotGroup& group = crew.make({"x", "y", "x"});
    crew.column->stack(group.id).removeModels(*group.models[0].uniqueId);
    EXPECT_THAT(Crew::uids(group), ElementsAre("y"));
    EXPECT_EQ(crew.saves, 1);
    crew.column->stack(Uuid::random()).removeModels("y");
    EXPECT_EQ(crew.saves, 1);
}

} // namespace
} // namespace varnhold::testing
