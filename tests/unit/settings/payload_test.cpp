#include <optional>
#include <vector>

#include "editing.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Payload, IsHandledOnALaterTurnOfTheMainThread) {
    Editing settings;
    settings.view->directModels = {model("m")};
    EXPECT_TRUE(settings.view->handleDrop({textPayload("m")}, TargetList::worker));
    EXPECT_THAT(settings.view->workerModels, IsEmpty());
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("m"));
}

TEST(Payload, ArrivesLateAndOffTheMainThread) {
    Editing settings;
    settings.view->directModels = {model("m")};
    LatePayload payload;
    settings.view->draggingItem = model("m");
    EXPECT_TRUE(settings.view->handleDrop({payload.provider()}, TargetList::worker));
    EXPECT_TRUE(payload.wanted());
    EXPECT_FALSE(settings.view->draggingItem) << "the drag is over before its text is there";
    settings.platform.advance(1h);
    payload.arrive("m");
    EXPECT_THAT(settings.view->workerModels, IsEmpty()) << "changed on the other thread";
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("m"));
}

TEST(Payload, EndsTheDragOnlyAfterAllLoadsHaveBegun) {
    Editing settings;
    settings.view->draggingItem = model("m");
    std::vector<bool> dragging;
    const platform::PayloadProvider provider = [&](const platform::PayloadReceiver&) {
        dragging.push_back(settings.view->draggingItem.has_value());
    };
    settings.view->handleDrop({provider, provider}, TargetList::worker);
    EXPECT_THAT(dragging, ElementsAre(true, true));
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(Payload, OfSeveralIsHandledInTheOrderOfArrival) {
    Editing settings;
    settings.view->directModels = {model("a"), model("b"), model("c")};
    LatePayload first, second, third;
    settings.view->handleDrop({first.provider(), second.provider(), third.provider()},
                              TargetList::photo);
    third.arrive("c");
    first.arrive("a");
    settings.platform.runMain();
    second.arrive("b");
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("c", "a", "b"));
    EXPECT_EQ(settings.newSaves(), 3);
}

TEST(Payload, WithoutTextIsIgnored) {
    Editing settings;
    settings.view->userBots.push_back(bot("ops"));
    settings.view->workerModels = {model("", "")};
    LatePayload drop, removal, assignment;
    EXPECT_TRUE(settings.view->handleDrop({drop.provider()}, TargetList::photo));
    EXPECT_TRUE(settings.view->handleLibraryDrop({removal.provider()}));
    EXPECT_TRUE(settings.view->chain(TargetList::photo).dropBots({assignment.provider()}));
    settings.platform.record.clear();
    for (LatePayload* payload : {&drop, &removal, &assignment}) {
        payload->arrive(std::nullopt);
    }
    EXPECT_THAT(settings.platform.record, IsEmpty());
    EXPECT_EQ(settings.view->workerModels.size(), 1U);
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(Payload, ThatIsNoTextDoesNotSpoilTheOthersOfItsDrop) {
    Editing settings;
    settings.view->directModels = {model("m")};
    LatePayload none;
    settings.view->handleDrop({none.provider(), textPayload("m")}, TargetList::photo);
    none.arrive(std::nullopt);
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("m"));
}

TEST(Payload, ThatArrivesAfterTheStateHasGoneIsDropped) {
    Editing settings;
    settings.view->directModels = {model("m")};
    LatePayload late, posted;
    settings.view->handleDrop({late.provider(), posted.provider()}, TargetList::worker);
    settings.view->handleDrop({textPayload("m")}, TargetList::photo);
    posted.arrive("m");
    settings.view.reset();
    late.arrive("m");
    settings.platform.settle();
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(Payload, IsJudgedByTheStateAtItsArrival) {
    Editing settings;
    settings.view->directModels = {model("m", "ROW")};
    LatePayload payload;
    settings.view->handleDrop({payload.provider()}, TargetList::worker, 1);
    settings.view->workerModels = {model("a"), model("b")};
    payload.arrive("ROW");
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "m", "b"));
}

TEST(Payload, WithNoProviderAtAllStillEndsTheDrag) {
    Editing settings;
    settings.view->draggingItem = model("m");
    EXPECT_TRUE(settings.view->handleDrop({}, TargetList::worker));
    EXPECT_FALSE(settings.view->draggingItem);
    settings.view->draggingItem = model("m");
    EXPECT_TRUE(settings.view->handleLibraryDrop({}));
    EXPECT_FALSE(settings.view->draggingItem);
}

} // namespace
} // namespace varnhold::testing
