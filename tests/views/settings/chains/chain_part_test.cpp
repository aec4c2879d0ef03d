#include <QSignalSpy>
#include <string>
#include <vector>

#include "modelled_settings.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Chains : ModelledSettings {
    Chains() {
        view->workerModels = {testing::model("a", "A"), testing::model("b", "B"),
                              testing::model("c", "C")};
        view->userBots = {bot("ops"), bot("cto")};
        modelled();
    }

    ChainPart& coding() { return chain(TargetList::worker); }
    [[nodiscard]] std::vector<std::string> uids(TargetList list) const {
        return column(*chain(list).models(), "uid");
    }
};

TEST(ChainPart, StandForTheSixChainsInTheOrderOfTheWindow) {
    Chains settings;
    std::vector<std::string> titles;
    for (const ChainPart* chain : settings.model->chains()) {
        titles.push_back(chain->title().toStdString());
    }
    EXPECT_THAT(titles, ElementsAre("⚖️ Governor Chain", "Architect Chain", "Coding Chain",
                                    "Photo Chain", "Video Chain", "Audio Chain"));
}

TEST(ChainPart, StandSideBySideBelowTheGovernorInTwoAndInThree) {
    Chains settings;
    EXPECT_EQ(settings.model->governorChain(), &settings.chain(TargetList::governor));
    std::vector<std::vector<std::string>> rows;
    for (const QVariant& row : settings.model->chainRows()) {
        rows.emplace_back();
        for (const QVariant& chain : row.toList()) {
            rows.back().push_back(chain.value<ChainPart*>()->key().toStdString());
        }
    }
    EXPECT_THAT(rows, ElementsAre(ElementsAre("architect", "worker"),
                                  ElementsAre("photo", "video", "voice")));
}

TEST(ChainPart, ShowsWhatIsFixedAboutItsChain) {
    Chains settings;
    ChainPart& architect = settings.chain(TargetList::architect);
    ChainPart& voice = settings.chain(TargetList::voice);
    EXPECT_EQ(architect.responseValues(),
              QStringList({QStringLiteral("Text"), QStringLiteral("Voice"),
                           QStringLiteral("Text + Voice")}));
    EXPECT_TRUE(settings.coding().responseValues().isEmpty());
    EXPECT_TRUE(settings.coding().builtIns().isEmpty());
    EXPECT_EQ(voice.builtIns().size(), 2);
    EXPECT_FALSE(voice.showEffort());
    EXPECT_EQ(architect.menuLines().size(), 5);
    EXPECT_EQ(settings.coding().tint(), QColor::fromRgbF(0.88F, 1.0F, 0.88F));
    EXPECT_FALSE(settings.chain(TargetList::governor).help().isEmpty());
    EXPECT_TRUE(architect.help().isEmpty());
}

TEST(ChainPart, ShowsItsModelsAsRows) {
    Chains settings;
    settings.view->workerModels[0].id = "~a";
    settings.view->workerModels[0].color = "red";
    settings.view->downloadingModels = {"b"};
    settings.view->changed();
    const KeyedListModel& rows = *settings.coding().models();
    EXPECT_THAT(column(rows, "name"), ElementsAre("Model a", "Model b", "Model c"));
    EXPECT_THAT(column(rows, "tag"), ElementsAre("Direct", "Family", "Family"));
    EXPECT_THAT(column(rows, "ground"), ElementsAre("red", "blue", "blue"));
    EXPECT_THAT(column(rows, "isDownloading"), ElementsAre("false", "true", "false"));
}

TEST(ChainPart, TellsOnlyOfWhatIsDifferent) {
    Chains settings;
    const QSignalSpy codingChanges(&settings.coding(), &ChainPart::shownChanged);
    const QSignalSpy photoChanges(&settings.chain(TargetList::photo), &ChainPart::shownChanged);
    settings.view->changed();
    settings.view->workerContextTokens = 8000;
    settings.view->changed();
    EXPECT_EQ(codingChanges.count(), 1);
    EXPECT_EQ(photoChanges.count(), 0);
    EXPECT_EQ(settings.coding().context().text, QStringLiteral("8K"));
}

TEST(ChainPart, StepsEffortAndBudgetAndSaves) {
    Chains settings;
    settings.coding().effortRight();
    EXPECT_EQ(settings.coding().effort().text, QStringLiteral("Med"));
    EXPECT_THAT(settings.read(settings.constants.effortPrefsFile),
                HasSubstr(R"("worker":"medium")"));
    settings.coding().effortLeft();
    settings.coding().effortLeft();
    settings.coding().effortLeft();
    EXPECT_EQ(settings.coding().effort().text, QStringLiteral("Off"));
    EXPECT_FALSE(settings.coding().effort().canGoLeft);
    EXPECT_TRUE(settings.coding().effort().inactive);
    settings.coding().contextRight();
    settings.coding().contextRight();
    settings.coding().contextLeft();
    EXPECT_THAT(settings.read(settings.constants.contextPrefsFile), HasSubstr(R"("worker":8000)"));
}

TEST(ChainPart, TakesTheChosenResponse) {
    Chains settings;
    ChainPart& architect = settings.chain(TargetList::architect);
    architect.chooseResponse(QStringLiteral("Text + Voice"));
    EXPECT_EQ(architect.response(), QStringLiteral("Text + Voice"));
    EXPECT_EQ(settings.read(settings.constants.responseModeFile), R"("both")");
    EXPECT_EQ(settings.coding().response(), QString());
}

TEST(ChainPart, HasADotOnceABotWantsToBeKeptWarm) {
    Chains settings;
    EXPECT_EQ(settings.coding().dotColor(), QString());
    settings.view->cacheWarmth["worker"] = 0.4;
    settings.coding().dropOnBots(QStringLiteral("com.ostrelleai.ops.telegramd"));
    settings.platform.runMain();
    EXPECT_EQ(settings.coding().dotColor(), QStringLiteral("orange"));
    settings.view->cacheWarmth["worker"] = 0.41;
    settings.view->changed();
    EXPECT_EQ(settings.coding().dotColor(), QStringLiteral("green"));
    EXPECT_EQ(settings.coding().dotHelp(), QStringLiteral("Cache warm"));
}

TEST(ChainPart, AssignsAndReleasesBots) {
    Chains settings;
    settings.coding().dropOnBots(QStringLiteral("com.ostrelleai.cto.telegramd"));
    settings.coding().dropOnBots(QStringLiteral("com.ostrelleai.ops.telegramd"));
    settings.platform.runMain();
    EXPECT_THAT(column(*settings.coding().bots(), "title"), ElementsAre("ops", "cto"));
    settings.coding().unassignBot(QStringLiteral("com.ostrelleai.ops.telegramd"));
    EXPECT_THAT(column(*settings.coding().bots(), "title"), ElementsAre("cto"));
    EXPECT_THAT(settings.read(settings.constants.chainBotAssignmentsFile),
                ::testing::Not(HasSubstr("ops")));
}

TEST(ChainPart, ReordersUnderTheDraggedRowAndSavesAtTheDrop) {
    Chains settings;
    settings.coding().startDrag(QStringLiteral("A"));
    EXPECT_THAT(column(*settings.coding().models(), "isDragging"),
                ElementsAre("true", "false", "false"));
    settings.coding().rowEntered(QStringLiteral("C"));
    EXPECT_THAT(settings.uids(TargetList::worker), ElementsAre("B", "C", "A"));
    EXPECT_EQ(settings.read(settings.constants.workerPrefsFile), "");
    settings.coding().rowDropped(QStringLiteral("A"));
    EXPECT_NE(settings.read(settings.constants.workerPrefsFile), "");
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(ChainPart, PutsWhatIsDroppedAtTheEndOrAtTheHead) {
    Chains settings;
    settings.view->photoModels = {testing::model("p", "P")};
    settings.chain(TargetList::photo).dropOnTop(QStringLiteral("C"));
    settings.platform.runMain();
    settings.chain(TargetList::photo).dropOnModels(QStringLiteral("A"));
    settings.platform.runMain();
    EXPECT_THAT(settings.uids(TargetList::photo), ElementsAre("C", "P", "A"));
    EXPECT_THAT(settings.uids(TargetList::worker), ElementsAre("B"));
}

TEST(ChainPart, PassesOverRowsThatHaveGone) {
    Chains settings;
    settings.coding().startDrag(QStringLiteral("gone"));
    EXPECT_FALSE(settings.view->draggingItem);
    settings.coding().rowEntered(QStringLiteral("gone"));
    settings.coding().rowDropped(QStringLiteral("gone"));
    settings.coding().deleteModel(QStringLiteral("gone"));
    EXPECT_THAT(settings.uids(TargetList::worker), ElementsAre("A", "B", "C"));
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(ChainPart, DeletesFromTheLibraryAlone) {
    Chains settings;
    settings.write(settings.constants.modelLibraryFile,
                   encodeLibrary({.models = {testing::model("a"), testing::model("b")}}));
    settings.coding().deleteModel(QStringLiteral("A"));
    EXPECT_THAT(settings.read(settings.constants.modelLibraryFile),
                ::testing::Not(HasSubstr("Model a")));
    EXPECT_THAT(settings.uids(TargetList::worker), ElementsAre("A", "B", "C"));
}

TEST(ChainPart, MarksWhatADragHoversOverForItsOwnChain) {
    Chains settings;
    settings.coding().setTopTargeted(true);
    settings.coding().setBotsTargeted(true);
    EXPECT_TRUE(settings.view->workerTopTargeted);
    EXPECT_TRUE(settings.view->chainBotDropTargeted["worker"]);
    EXPECT_TRUE(settings.coding().topTargeted());
    EXPECT_TRUE(settings.coding().botsTargeted());
    EXPECT_FALSE(settings.chain(TargetList::photo).topTargeted());
    EXPECT_FALSE(settings.chain(TargetList::photo).botsTargeted());
    settings.coding().setTopTargeted(false);
    settings.coding().setBotsTargeted(false);
    EXPECT_FALSE(settings.coding().topTargeted());
    EXPECT_FALSE(settings.coding().botsTargeted());
}

} // namespace
} // namespace varnhold::testing
