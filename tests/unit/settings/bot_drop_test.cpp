#include <string>

#include "editing.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

struct Bots : Editing {
    std::string ops = bot("ops").launchdLabel;
    std::string cto = bot("cto").launchdLabel;

    Bots() {
        view->userBots.push_back(bot("ops"));
        view->userBots.push_back(bot("cto"));
    }
};

TEST(BotDrop, AssignsInTheOrderOfDroppingAndSaves) {
    Bots settings;
    EXPECT_TRUE(settings.dropBot(settings.cto, TargetList::voice));
    settings.dropBot(settings.ops, TargetList::voice);
    EXPECT_THAT(settings.view->chainBotAssignments,
                ElementsAre(Pair("voice", ElementsAre(settings.cto, settings.ops))));
    EXPECT_EQ(settings.newSaves(), 2);
    EXPECT_EQ(settings.read(settings.constants.chainBotAssignmentsFile),
              encodeAssignments(settings.view->chainBotAssignments));
}

TEST(BotDrop, LeavesChainsWithoutBotsEmpty) {
    Bots settings;
    settings.dropBot(settings.cto, TargetList::voice);
    EXPECT_THAT(settings.view->chain(TargetList::voice).bots(), ElementsAre(bot("cto")));
    EXPECT_THAT(settings.view->chain(TargetList::photo).bots(), ::testing::IsEmpty());
}

TEST(BotDrop, LeavesTheBotInOtherChains) {
    Bots settings;
    for (const TargetList list : allTargetLists) {
        settings.dropBot(settings.ops, list);
        EXPECT_THAT(settings.view->chainBotAssignments.at(std::string(chainKey(list))),
                    ElementsAre(settings.ops));
    }
}

TEST(BotDrop, OfALabelAlreadyInTheChainChangesAndSavesNothing) {
    Bots settings;
    settings.view->chainBotAssignments["photo"] = {settings.ops};
    settings.dropBot(settings.ops, TargetList::photo);
    EXPECT_THAT(settings.view->chainBotAssignments.at("photo"), ElementsAre(settings.ops));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(BotDrop, OfTextFromOutsideAssignsTheBotWithThatLabelAlone) {
    Bots settings;
    settings.view->workerModels = {model("m")};
    for (const char* foreign : {"hello", "", "ops", "m", "com.ostrelleai.ops.telegramd "}) {
        settings.dropBot(foreign, TargetList::worker);
    }
    EXPECT_THAT(settings.view->chainBotAssignments, IsEmpty());
    EXPECT_EQ(settings.newSaves(), 0);
    settings.dropBot("com.ostrelleai.ops.telegramd", TargetList::worker);
    EXPECT_THAT(settings.view->chainBotAssignments.at("worker"), ElementsAre(settings.ops));
}

TEST(BotDrop, IsTakenAtOnceAndHandledLater) {
    Bots settings;
    LatePayload payload;
    EXPECT_TRUE(settings.view->chain(TargetList::worker).dropBots({payload.provider()}));
    payload.arrive(settings.ops);
    EXPECT_THAT(settings.view->chainBotAssignments, IsEmpty());
    settings.platform.runMain();
    EXPECT_THAT(settings.view->chainBotAssignments.at("worker"), ElementsAre(settings.ops));
}

TEST(BotDrop, GivesTheDraggedModelAndTheDraggedLabelNoPart) {
    Bots settings;
    settings.view->draggingItem = model("m");
    settings.view->draggingBotLabel = "x";
    settings.dropBot(settings.ops, TargetList::worker);
    EXPECT_TRUE(settings.view->draggingItem);
    EXPECT_EQ(settings.view->draggingBotLabel, "x");
}

TEST(UnassignBot, RemovesEveryEntryOfTheLabelFromThatChainAndSaves) {
    Bots settings;
    settings.view->chainBotAssignments = {{"worker", {settings.ops, settings.cto, settings.ops}},
                                          {"photo", {settings.ops}}};
    settings.view->chain(TargetList::worker).unassignBot(settings.ops);
    EXPECT_THAT(settings.view->chainBotAssignments,
                ElementsAre(Pair("photo", ElementsAre(settings.ops)),
                            Pair("worker", ElementsAre(settings.cto))));
    EXPECT_EQ(settings.newSaves(), 1);
}

TEST(UnassignBot, SavesAlsoWhereNothingWasAssigned) {
    Bots settings;
    settings.view->chain(TargetList::worker).unassignBot(settings.ops);
    EXPECT_THAT(settings.view->chainBotAssignments, IsEmpty());
    EXPECT_EQ(settings.newSaves(), 1);
}

} // namespace
} // namespace varnhold::testing
