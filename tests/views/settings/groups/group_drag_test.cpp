#include <string>
#include <vector>

#include "model_blocks.h"
#include "shown_chains.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const QString crewModels = QStringLiteral("End of Crew");
const QString crewTop = QStringLiteral("Top of Crew");
const QString crewBots = QStringLiteral("Bots of Crew");

struct GroupDrags : ShownChains {
    GroupDrags() {
        view->customGroups = {
            CustomBotGroup{.name = "Crew",
                           .models = {testing::model("a", "A"), testing::model("b", "B"),
                                      testing::model("c", "C")}}};
        view->allLibraryModels = {testing::model("x"), testing::model("y", "Y")};
        view->workerModels = {testing::model("w", "W")};
        view->userBots = {bot("ops"), bot("cto")};
    }

    [[nodiscard]] CustomBotGroup& first() { return view->customGroups.front(); }
    [[nodiscard]] std::vector<std::string> ids() {
        std::vector<std::string> out;
        for (const AIModelItem& each : first().models) {
            out.push_back(each.id);
        }
        return out;
    }
    [[nodiscard]] std::string saved() const { return read(constants.customGroupsFile); }
    [[nodiscard]] QPoint row(const char* id) const {
        return middleOf(named(QStringLiteral("Model ") + QString::fromUtf8(id), crew));
    }
    void dropFree(const char* text) {
        const QQuickItem* area = named(crewModels);
        dropAt(area->mapToScene(QPointF(area->width() / 2, area->height() - 3)).toPoint(),
               QString::fromUtf8(text));
    }
};

TEST(GroupDrag, PutsLibraryModelsAtTheEndOrTheHead) {
    GroupDrags settings;
    settings.show();
    settings.dropFree("x");
    settings.drop(QStringLiteral("Y"), crewTop);
    EXPECT_THAT(settings.ids(), ElementsAre("y", "a", "b", "c", "x"));
    EXPECT_TRUE(settings.first().models.back().uniqueId);
    EXPECT_THAT(settings.saved(), HasSubstr("Model x"));
}

TEST(GroupDrag, TakesAModelTwiceOnlyByAnIdentityOfItsOwn) {
    GroupDrags settings;
    settings.show();
    settings.dropFree("x");
    settings.dropFree("x");
    settings.dropFree("Y");
    settings.dropFree("Y");
    EXPECT_THAT(settings.ids(), ElementsAre("a", "b", "c", "x", "y", "y"));
}

TEST(GroupDrag, AsksForNoSignIn) {
    GroupDrags settings;
    settings.view->allLibraryModels[0].family = "Cerebras";
    settings.view->allLibraryModels[0].provider_key = "cerebras";
    settings.show();
    settings.dropFree("x");
    EXPECT_FALSE(settings.view->showAlert);
    EXPECT_THAT(settings.ids(), ElementsAre("a", "b", "c", "x"));
}

TEST(GroupDrag, TakesNoRowOfAChain) {
    GroupDrags settings;
    settings.show();
    settings.dropFree("W");
    EXPECT_THAT(settings.ids(), ElementsAre("a", "b", "c"));
    EXPECT_THAT(settings.view->workerModels, SizeIs(1));
    EXPECT_EQ(settings.saved(), "");
}

TEST(GroupDrag, EndsADragOutOfTheChainsToo) {
    GroupDrags settings;
    settings.show();
    settings.lift(QStringLiteral("Model w"), QStringLiteral("Coding Chain"));
    EXPECT_TRUE(settings.view->draggingItem);
    settings.dropFree("W");
    EXPECT_FALSE(settings.view->draggingItem);
}

TEST(GroupDrag, OverRowsReordersAndSavesAtTheDrop) {
    GroupDrags settings;
    settings.show();
    settings.lift(QStringLiteral("Model a"), crew);
    const QPoint third = settings.row("c");
    settings.carryTo(third, QStringLiteral("A"));
    EXPECT_THAT(settings.ids(), ElementsAre("b", "c", "a"));
    EXPECT_EQ(settings.saved(), "");
    settings.dropAt(third, QStringLiteral("A"));
    EXPECT_NE(settings.saved(), "");
}

TEST(GroupDrag, MakesTheModelFaintButNotTheButtonBesideIt) {
    GroupDrags settings;
    settings.show();
    settings.lift(QStringLiteral("Model a"), crew);
    const QQuickItem* row = settings.named(QStringLiteral("Model a"), crew);
    EXPECT_DOUBLE_EQ(blockOf(row)->opacity(), 0.1);
    const QQuickItem* button = settings.named(QStringLiteral("Remove Model a from Crew"), crew);
    EXPECT_EQ(button->opacity() * row->opacity(), 1);
}

TEST(GroupDrag, ReordersHoweverLongItTakes) {
    GroupDrags settings;
    settings.show();
    settings.drag(QStringLiteral("Model a"), crew, [&](const QDrag&) {
        settings.platform.advance(1s);
        settings.carryTo(settings.row("b"), QStringLiteral("A"));
        settings.platform.advance(1s);
        const QPoint third = settings.row("c");
        settings.carryTo(third, QStringLiteral("A"));
        EXPECT_EQ(settings.saved(), "");
        settings.platform.advance(3s);
        settings.dropAt(third, QStringLiteral("A"));
    });
    EXPECT_THAT(settings.ids(), ElementsAre("b", "c", "a"));
    EXPECT_NE(settings.saved(), "");
}

TEST(GroupDrag, ThatEndsOutsideIsForgottenAfterHalfASecond) {
    GroupDrags settings;
    settings.show();
    settings.drag(QStringLiteral("Model a"), crew, [](const QDrag&) {});
    settings.platform.advance(500ms);
    settings.carryTo(settings.row("c"), QStringLiteral("A")); // some other program's text
    EXPECT_THAT(settings.ids(), ElementsAre("a", "b", "c"));
}

TEST(GroupDrag, ReleasedOnARowIsConsumedThere) {
    GroupDrags settings;
    settings.show();
    settings.dropAt(settings.row("b"), QStringLiteral("x"));
    EXPECT_THAT(settings.ids(), ElementsAre("a", "b", "c"));
}

TEST(GroupDrag, OfABotAssignsItOnce) {
    GroupDrags settings;
    settings.show();
    settings.drop(QStringLiteral("com.ostrelleai.cto.telegramd"), crewBots);
    settings.drop(QStringLiteral("com.ostrelleai.cto.telegramd"), crewBots);
    settings.drop(QStringLiteral("nobody"), crewBots);
    EXPECT_THAT(settings.first().assignedBotLabels, ElementsAre("com.ostrelleai.cto.telegramd"));
    EXPECT_NE(settings.named(QStringLiteral("cto"), crew), nullptr);
}

TEST(GroupDrag, ByKeysReordersToo) {
    GroupDrags settings;
    settings.show();
    settings.focus(QStringLiteral("Model c"), crew);
    settings.key(Qt::Key_Space);
    settings.key(Qt::Key_Up);
    settings.key(Qt::Key_Up);
    settings.key(Qt::Key_Return);
    EXPECT_THAT(settings.ids(), ElementsAre("c", "a", "b"));
    EXPECT_THAT(settings.saved(), HasSubstr("Model c"));
}

} // namespace
} // namespace varnhold::testing
