#include <string>
#include <vector>

#include "editing.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(Drop, TwiceOfALibraryRowWithAUniqueIdInsertsItTwice) {
    Editing settings;
    settings.view->directModels = {model("m", "ROW")};
    settings.drop("ROW", TargetList::worker);
    settings.drop("ROW", TargetList::worker);
    const auto& rows = settings.view->workerModels;
    ASSERT_THAT(rows, SizeIs(2));
    EXPECT_NE(rows[0].uniqueId, rows[1].uniqueId);
    EXPECT_NE(rows[0].uid(), "ROW");
    EXPECT_EQ(settings.newSaves(), 2);
}

TEST(Drop, TwiceOfALibraryRowWithoutUniqueIdInsertsItOnce) {
    Editing settings;
    settings.view->directModels = {model("m")};
    settings.drop("m", TargetList::worker);
    settings.drop("m", TargetList::worker);
    EXPECT_THAT(settings.view->workerModels, SizeIs(1));
    EXPECT_EQ(settings.newSaves(), 1);
    EXPECT_FALSE(settings.view->showAlert);
}

TEST(Drop, OfARowOnItsOwnChainDoesNothing) {
    Editing settings;
    settings.view->workerModels = {model("a", "A"), model("b", "B")};
    EXPECT_TRUE(settings.drop("B", TargetList::worker, 0));
    EXPECT_TRUE(settings.drop("A", TargetList::worker));
    EXPECT_THAT(settings.ids(TargetList::worker), ElementsAre("a", "b"));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(Drop, OfACerebrasModelFromAnotherChainIsNotChecked) {
    Editing settings;
    AIModelItem item = model("qwen-3", "Q");
    item.family = "Cerebras";
    item.provider_key = "cerebras";
    settings.view->architectModels = {item};
    settings.drop("Q", TargetList::worker);
    EXPECT_THAT(settings.view->architectModels, IsEmpty());
    EXPECT_THAT(settings.view->workerModels, ElementsAre(item));
    EXPECT_FALSE(settings.view->showAlert);
    EXPECT_EQ(settings.newSaves(), 1);
}

TEST(Drop, FromAnotherChainNeedsNobodySignedIn) {
    Editing settings;
    AIModelItem item = model("sonnet", "S");
    item.provider_key = "claude";
    settings.view->photoModels = {item};
    EXPECT_FALSE(settings.view->checkAuthFor(item));
    settings.drop("S", TargetList::voice);
    EXPECT_THAT(settings.view->voiceModels, ElementsAre(item));
    EXPECT_FALSE(settings.view->showAlert);
}

TEST(Drop, OnAnEmptyChainGivesTheFirstPlaceWithOrWithoutAPlace) {
    Editing settings;
    settings.view->directModels = {model("m")};
    settings.drop("m", TargetList::photo, 0);
    settings.drop("m", TargetList::video);
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("m"));
    EXPECT_THAT(settings.ids(TargetList::video), ElementsAre("m"));
}

TEST(Drop, GoesToTheHeadTheEndOrThePlaceAskedFor) {
    Editing settings;
    settings.view->directModels = {model("head"), model("end"), model("mid"), model("far")};
    settings.view->workerModels = {model("a"), model("b")};
    settings.drop("head", TargetList::worker, 0);
    settings.drop("end", TargetList::worker);
    settings.drop("mid", TargetList::worker, 2);
    settings.drop("far", TargetList::worker, 99);
    EXPECT_THAT(settings.ids(TargetList::worker),
                ElementsAre("head", "a", "mid", "b", "end", "far"));
}

TEST(Drop, GivesTheCopyAFreshIdentityInCapitals) {
    Editing settings;
    const AIModelItem original = model("m", "row");
    settings.view->directModels = {original};
    settings.drop("row", TargetList::worker);
    AIModelItem copy = settings.view->workerModels.at(0);
    const auto identity = Uuid::parse(copy.uniqueId.value());
    ASSERT_TRUE(identity);
    EXPECT_EQ(copy.uniqueId, identity->text());
    copy.uniqueId = original.uniqueId;
    EXPECT_EQ(copy, original);
    EXPECT_THAT(settings.view->directModels, ElementsAre(original));
}

TEST(Drop, IsRefusedWhereTheChainHoldsTheIdUnderAnotherUid) {
    Editing settings;
    settings.view->workerModels = {model("m", "OTHER")};
    settings.view->directModels = {model("m")};
    settings.drop("m", TargetList::worker);
    EXPECT_THAT(settings.view->workerModels, SizeIs(1));
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(Drop, TakesARowOfAnotherChainByItsUidNotByItsId) {
    Editing settings;
    settings.view->architectModels = {model("m", "UID")};
    settings.view->directModels = {model("m")};
    settings.drop("m", TargetList::worker);
    EXPECT_THAT(settings.view->architectModels, SizeIs(1));
    ASSERT_THAT(settings.view->workerModels, SizeIs(1));
    EXPECT_NE(settings.view->workerModels[0].uid(), "UID");
}

TEST(Drop, TakesTheRowFromTheFirstOtherChainThatHasIt) {
    Editing settings;
    settings.view->workerModels = {model("w", "TWIN")};
    settings.view->governorModels = {model("g", "TWIN")};
    settings.drop("TWIN", TargetList::photo);
    EXPECT_THAT(settings.ids(TargetList::photo), ElementsAre("w"));
    EXPECT_THAT(settings.view->workerModels, IsEmpty());
    EXPECT_THAT(settings.ids(TargetList::governor), ElementsAre("g"));
}

TEST(Drop, SearchesTheLibraryInItsFixedOrder) {
    const auto named = [](const std::string& name) {
        AIModelItem item = model("same");
        item.name = name;
        return item;
    };
    Editing settings;
    ModelSelectorView& view = *settings.view;
    view.ollamaModels = {named("ollama")};
    view.openRouterModels = {named("openrouter")};
    view.directModels = {named("direct")};
    view.cerebrasModels = {named("cerebras")};
    settings.drop("same", TargetList::architect);
    view.ollamaModels.clear();
    settings.drop("same", TargetList::worker);
    view.openRouterModels.clear();
    settings.drop("same", TargetList::photo);
    view.directModels.clear();
    settings.drop("same", TargetList::video);
    EXPECT_EQ(view.architectModels.at(0).name, "ollama");
    EXPECT_EQ(view.workerModels.at(0).name, "openrouter");
    EXPECT_EQ(view.photoModels.at(0).name, "direct");
    EXPECT_EQ(view.videoModels.at(0).name, "cerebras");
}

TEST(Drop, OfALocalToolOrOfForeignTextDoesNothing) {
    Editing settings;
    for (const std::string& payload :
         {settings.view->localToolModels[0].uid(), std::string("local:say"), std::string("hello"),
          std::string(), std::string("com.ostrelleai.governor")}) {
        EXPECT_TRUE(settings.drop(payload, TargetList::voice)) << payload;
    }
    EXPECT_THAT(settings.view->voiceModels, IsEmpty());
    EXPECT_THAT(settings.view->chainBotAssignments, IsEmpty());
    EXPECT_EQ(settings.newSaves(), 0);
}

TEST(Drop, IsSavedAndAnnouncedAsANewRow) {
    Editing settings;
    settings.view->directModels = {model("m")};
    settings.view->workerModels = {model("a")};
    settings.drop("m", TargetList::worker, 0);
    // The cleared drag, the new row, and the toast of the save.
    EXPECT_THAT(settings.animations,
                ElementsAre(Animation::none, Animation::none, Animation::none));
    EXPECT_EQ(settings.fileOf(TargetList::worker), encodeChain(settings.view->workerModels));
}

TEST(Drop, FromAnotherChainMovesTheRowThatKeepsItsIdentity) {
    Editing settings;
    settings.view->workerModels = {model("a", "A"), model("b", "B")};
    settings.view->voiceModels = {model("v", "V")};
    settings.drop("B", TargetList::voice);
    EXPECT_EQ(settings.view->voiceModels.at(1), model("b", "B"));
    EXPECT_EQ(settings.fileOf(TargetList::voice), encodeChain(settings.view->voiceModels));
    EXPECT_EQ(settings.fileOf(TargetList::worker), encodeChain(settings.view->workerModels));
}

TEST(Drop, OnAChainBeyondTheSixIsTheGovernors) {
    Editing settings;
    settings.view->directModels = {model("m")};
    const auto beyond = static_cast<TargetList>(17);
    settings.drop("m", beyond);
    EXPECT_THAT(settings.ids(TargetList::governor), ElementsAre("m"));
    EXPECT_EQ(&settings.view->chainArray(beyond), &settings.view->governorModels);
}

TEST(ChainBinding, ReadsAndWritesTheChainItself) {
    Editing settings;
    const ModelSelectorView& view = *settings.view;
    const std::vector<const std::vector<AIModelItem>*> chains{
        &view.architectModels, &view.workerModels, &view.photoModels,
        &view.videoModels,     &view.voiceModels,  &view.governorModels};
    for (std::size_t i = 0; i < allTargetLists.size(); ++i) {
        EXPECT_EQ(&settings.view->chainBinding(allTargetLists[i]), chains[i]);
        EXPECT_EQ(&view.chainArray(allTargetLists[i]), chains[i]);
    }
}

} // namespace
} // namespace varnhold::testing
