#include <QCoreApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QUrl>
#include <string>
#include <vector>

#include "modelled_settings.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

struct Groups : ModelledSettings {
    Groups() {
        view->customGroups = {
            CustomBotGroup{.name = "Crew",
                           .models = {testing::model("a", "A"), testing::model("b", "B"),
                                      testing::model("c", "C")},
                           .colorHex = "FFD6D6"},
            CustomBotGroup{.name = "Others"}};
        view->allLibraryModels = {testing::model("x"), testing::model("y")};
        view->userBots = {bot("ops"), bot("cto")};
        modelled();
    }

    [[nodiscard]] GroupPart& crew() const { return group(0); }
    [[nodiscard]] std::vector<std::string> ids() const { return column(*crew().models(), "name"); }
    [[nodiscard]] std::string saved() const { return read(constants.customGroupsFile); }
};

TEST(GroupsPart, HasAPartForEachGroupThatLivesAsLongAsIt) {
    Groups settings;
    ASSERT_EQ(settings.model->groups()->groups()->count(), 2);
    const QPointer<GroupPart> first = &settings.group(0);
    GroupPart* second = &settings.group(1);
    settings.view->customGroups.erase(settings.view->customGroups.begin());
    settings.view->changed();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(first, nullptr);
    ASSERT_EQ(settings.model->groups()->groups()->count(), 1);
    EXPECT_EQ(&settings.group(0), second);
}

TEST(GroupsPart, KeepsGroupsOfOneIdentityApart) {
    Groups settings;
    settings.view->customGroups[1].id = settings.view->customGroups[0].id;
    settings.view->changed();
    ASSERT_EQ(settings.model->groups()->groups()->count(), 2);
    EXPECT_EQ(settings.group(0).name(), QStringLiteral("Crew"));
    EXPECT_EQ(settings.group(1).name(), QStringLiteral("Others"));
}

TEST(GroupsPart, ShowsNameColourModelsAndSteppers) {
    Groups settings;
    EXPECT_EQ(settings.crew().name(), QStringLiteral("Crew"));
    EXPECT_EQ(settings.crew().ground().name(), QStringLiteral("#ffd6d6"));
    EXPECT_THAT(settings.ids(), ElementsAre("Model a", "Model b", "Model c"));
    EXPECT_EQ(settings.crew().effort().text, QStringLiteral("Off"));
    EXPECT_EQ(settings.crew().context().text, QStringLiteral("Auto"));
    EXPECT_TRUE(settings.crew().context().inactive);
}

TEST(GroupsPart, TellsOnlyOfTheGroupThatIsDifferent) {
    Groups settings;
    const QSignalSpy changes(&settings.group(0), &GroupPart::shownChanged);
    const QSignalSpy others(&settings.group(1), &GroupPart::shownChanged);
    settings.crew().effortRight();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(others.count(), 0);
}

TEST(GroupsPart, LooksAtAttachedPathsWhenTheyChangeAndWhenTheWindowAppears) {
    Groups settings;
    const std::string path = settings.home.at("notes");
    settings.view->customGroups[0].attachedPaths = {path};
    settings.view->changed();
    const auto image = [&] {
        return settings.crew().attachments()->value(0, QStringLiteral("image")).toString();
    };
    EXPECT_EQ(image(), QStringLiteral("doc.fill"));
    settings.home.makeFolder(path);
    settings.view->changed();
    EXPECT_EQ(image(), QStringLiteral("doc.fill"));
    settings.model->appear();
    EXPECT_EQ(image(), QStringLiteral("folder.fill"));
}

TEST(GroupsPart, StepsAndSaves) {
    Groups settings;
    settings.view->customGroups[0].contextTokens = 2000000;
    settings.crew().contextLeft();
    EXPECT_EQ(settings.crew().context().text, QStringLiteral("1.0M"));
    settings.crew().contextRight();
    EXPECT_EQ(settings.crew().context().text, QStringLiteral("2.0M"));
    EXPECT_FALSE(settings.crew().context().canGoRight);
    settings.crew().effortRight();
    settings.crew().effortRight();
    settings.crew().effortLeft();
    EXPECT_THAT(settings.saved(), HasSubstr(R"("effortLevel":"low")"));
}

TEST(GroupsPart, TakesAndReleasesBots) {
    Groups settings;
    settings.crew().dropOnBots(QStringLiteral("com.ostrelleai.cto.telegramd"));
    settings.crew().dropOnBots(QStringLiteral("nobody"));
    settings.platform.runMain();
    EXPECT_THAT(column(*settings.crew().bots(), "title"), ElementsAre("cto"));
    EXPECT_THAT(settings.saved(), HasSubstr("com.ostrelleai.cto.telegramd"));
    settings.crew().unassignBot(QStringLiteral("com.ostrelleai.cto.telegramd"));
    EXPECT_THAT(column(*settings.crew().bots(), "title"), IsEmpty());
}

TEST(GroupsPart, TakesModelsOfTheLibraryAtTheEndAndAtTheHead) {
    Groups settings;
    settings.crew().dropOnModels(QStringLiteral("x"));
    settings.crew().dropOnTop(QStringLiteral("y"));
    settings.crew().dropOnModels(QStringLiteral("A"));
    settings.platform.runMain();
    EXPECT_THAT(settings.ids(), ElementsAre("Model y", "Model a", "Model b", "Model c", "Model x"));
    settings.crew().removeModel(QStringLiteral("B"));
    EXPECT_THAT(settings.ids(), ElementsAre("Model y", "Model a", "Model c", "Model x"));
    EXPECT_THAT(settings.saved(), ::testing::Not(HasSubstr("Model b")));
}

TEST(GroupsPart, ReordersUnderTheDraggedRowAndSavesAtTheDrop) {
    Groups settings;
    settings.crew().startDrag(QStringLiteral("C"));
    EXPECT_THAT(column(*settings.crew().models(), "isDragging"),
                ElementsAre("false", "false", "true"));
    settings.crew().rowEntered(QStringLiteral("A"));
    EXPECT_THAT(settings.ids(), ElementsAre("Model c", "Model a", "Model b"));
    EXPECT_EQ(settings.saved(), "");
    settings.crew().rowDropped(QStringLiteral("C"));
    EXPECT_THAT(settings.saved(), HasSubstr("Model c"));
}

TEST(GroupsPart, ForgetsADragThatReportsNoEndAfterHalfASecond) {
    Groups settings;
    settings.crew().startDrag(QStringLiteral("C"));
    settings.platform.advance(499ms);
    EXPECT_THAT(column(*settings.crew().models(), "isDragging"),
                ElementsAre("false", "false", "true"));
    settings.platform.advance(1ms);
    EXPECT_THAT(column(*settings.crew().models(), "isDragging"),
                ElementsAre("false", "false", "false"));
    settings.crew().rowEntered(QStringLiteral("A"));
    EXPECT_THAT(settings.ids(), ElementsAre("Model a", "Model b", "Model c"));
}

TEST(GroupsPart, AttachesDroppedFilesAndTheirDoctrine) {
    Groups settings;
    const std::string folder = settings.home.at("notes");
    settings.write(folder + "/doctrine.txt", "Be brief.");
    const QList<QUrl> urls{QUrl::fromLocalFile(toQString(folder)),
                           QUrl(QStringLiteral("https://example.org/x.txt"))};
    settings.crew().attachUrls(urls);
    settings.crew().attachUrls(urls);
    settings.crew().attachUrls({QUrl::fromLocalFile(toQString(folder + "/"))});
    EXPECT_THAT(column(*settings.crew().attachments(), "name"), ElementsAre("notes"));
    EXPECT_THAT(column(*settings.crew().attachments(), "image"), ElementsAre("folder.fill"));
    EXPECT_THAT(column(*settings.crew().doctrine(), "name"), ElementsAre("doctrine.txt"));
    settings.crew().removeAttachment(toQString(folder));
    EXPECT_EQ(settings.crew().attachments()->count(), 0);
    EXPECT_EQ(settings.crew().doctrine()->count(), 1) << "what came from it stays";
    settings.crew().removeDoctrine(toQString(folder + "/doctrine.txt"));
    EXPECT_EQ(settings.crew().doctrine()->count(), 0);
}

TEST(GroupsPart, KeepsObjectivesPerGroup) {
    Groups settings;
    settings.crew().toggleObjectives();
    EXPECT_TRUE(settings.crew().expanded());
    EXPECT_FALSE(settings.group(1).expanded());
    settings.crew().setObjectives(QStringLiteral("Ship it."));
    EXPECT_EQ(settings.crew().objectives(), QStringLiteral("Ship it."));
    EXPECT_THAT(settings.saved(), HasSubstr("Ship it."));
    settings.crew().toggleObjectives();
    EXPECT_FALSE(settings.crew().expanded());
}

TEST(GroupsPart, DoesNothingOnAGroupThatHasGone) {
    Groups settings;
    GroupPart& gone = settings.crew();
    settings.view->customGroups.clear();
    gone.effortRight();
    gone.dropOnModels(QStringLiteral("x"));
    gone.rowEntered(QStringLiteral("A"));
    gone.rowDropped(QStringLiteral("A"));
    gone.removeAttachment(QStringLiteral("/x"));
    gone.attachUrls({QUrl::fromLocalFile(QStringLiteral("/x"))});
    settings.platform.runMain();
    gone.startDrag(QStringLiteral("A"));
    EXPECT_EQ(settings.saved(), "");
    EXPECT_THAT(settings.view->customGroups, IsEmpty());
}

} // namespace
} // namespace varnhold::testing
