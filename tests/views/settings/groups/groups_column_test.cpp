#include <QApplication>
#include <QFileDialog>
#include <QMimeData>
#include <initializer_list>
#include <string>

#include "shown_chains.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

const QString attach = QStringLiteral("Attach File / Folder");
const QString objectives = QStringLiteral("Objectives");
const QString editor = QStringLiteral("Objectives of Crew");

struct Column : ShownChains {
    Column() {
        view->customGroups = {
            CustomBotGroup{.name = "Crew",
                           .models = {testing::model("a", "A"), testing::model("b", "B")},
                           .colorHex = "FFD6D6"}};
        view->userBots = {bot("ops"), bot("cto")};
    }

    [[nodiscard]] std::string saved() const { return read(constants.customGroupsFile); }
    [[nodiscard]] CustomBotGroup& first() { return view->customGroups.front(); }
    [[nodiscard]] QString value(const QString& stepper) const {
        return named(stepper, crew)->property("valueText").toString();
    }

    // Opens the menu of the button, chooses, and waits for the dialog.
    QFileDialog* ask(const QString& choice) {
        click(attach, crew);
        EXPECT_TRUE(QTest::qWaitFor([&] { return named(choice) != nullptr; }));
        QTest::qWait(50);
        click(choice);
        QFileDialog* dialog = nullptr;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            dialog = window.findChild<QFileDialog*>();
            return dialog != nullptr && dialog->isVisible();
        }));
        return dialog;
    }
};

TEST(GroupsColumn, TellsHowToComeByGroupsWhileThereAreNone) {
    Column settings;
    settings.view->customGroups.clear();
    settings.show();
    EXPECT_NE(settings.named(QStringLiteral("No Custom Groups")), nullptr);
    EXPECT_NE(settings.named(QStringLiteral("Add groups via File → Custom Groups…")), nullptr);
    settings.view->customGroups.push_back(CustomBotGroup{.name = "New"});
    settings.view->changed();
    EXPECT_EQ(settings.named(QStringLiteral("No Custom Groups")), nullptr);
    EXPECT_NE(settings.named(QStringLiteral("New")), nullptr);
}

TEST(GroupsColumn, StandsBesideTheGovernor) {
    Column settings;
    settings.show();
    const QQuickItem* chain = settings.named(governor);
    const QQuickItem* group = settings.named(crew);
    EXPECT_GT(group->mapToScene(QPointF()).x(), chain->mapToScene(QPointF(chain->width(), 0)).x());
}

TEST(GroupSection, StepsEffortAndSaves) {
    Column settings;
    settings.show();
    EXPECT_EQ(settings.value(effort), QStringLiteral("Off"));
    EXPECT_FALSE(settings.named(QStringLiteral("Less Effort"), crew)->isEnabled());
    settings.click(QStringLiteral("More Effort"), crew);
    EXPECT_EQ(settings.value(effort), QStringLiteral("Low"));
    EXPECT_THAT(settings.saved(), HasSubstr(R"("effortLevel":"low")"));
}

TEST(GroupSection, StepsTheBudgetBetweenItsEnds) {
    Column settings;
    settings.show();
    EXPECT_EQ(settings.value(context), QStringLiteral("Auto"));
    EXPECT_FALSE(settings.named(QStringLiteral("Less Context"), crew)->isEnabled());
    settings.click(QStringLiteral("More Context"), crew);
    EXPECT_EQ(settings.value(context), QStringLiteral("8K"));
    settings.first().contextTokens = 2000000;
    settings.view->changed();
    EXPECT_EQ(settings.value(context), QStringLiteral("2.0M"));
    EXPECT_FALSE(settings.named(QStringLiteral("More Context"), crew)->isEnabled());
    settings.first().contextTokens = 50000;
    settings.view->changed();
    settings.click(QStringLiteral("Less Context"), crew);
    EXPECT_EQ(settings.first().contextTokens, 32000);
    settings.first().contextTokens = 50000;
    settings.view->changed();
    settings.focus(context, crew);
    settings.key(Qt::Key_Right);
    EXPECT_EQ(settings.first().contextTokens, 64000);
    EXPECT_THAT(settings.saved(), HasSubstr(R"("contextTokens":64000)"));
}

TEST(GroupSection, ReleasesBotsAndModels) {
    Column settings;
    settings.first().assignedBotLabels = {bot("ops").launchdLabel};
    settings.show();
    settings.click(QStringLiteral("Remove ops from Crew"));
    EXPECT_THAT(settings.first().assignedBotLabels, IsEmpty());
    EXPECT_NE(settings.named(QStringLiteral("Drag bots here"), crew), nullptr);
    EXPECT_EQ(settings.named(QStringLiteral("Remove from library"), crew), nullptr);
    settings.click(QStringLiteral("Remove Model a from Crew"));
    EXPECT_THAT(settings.saved(), Not(HasSubstr("Model a")));
    settings.click(QStringLiteral("Remove Model b from Crew"));
    EXPECT_NE(settings.named(QStringLiteral("Drag models here"), crew), nullptr);
}

TEST(GroupObjectives, AreTypedAndSavedAtEachKey) {
    Column settings;
    settings.show();
    EXPECT_EQ(settings.named(editor), nullptr);
    settings.click(objectives, crew);
    EXPECT_NE(settings.named(QStringLiteral("Hide Objectives"), crew), nullptr);
    settings.click(editor);
    QTest::keyClicks(settings.page, QStringLiteral("Win"));
    EXPECT_THAT(settings.saved(), HasSubstr(R"("objectives":"Win")"));
    QTest::keyClick(settings.page, Qt::Key_Left);
    QTest::keyClicks(settings.page, QStringLiteral("x"));
    EXPECT_EQ(settings.first().objectives, "Wixn") << "the cursor stays where it was";
    settings.click(QStringLiteral("Hide Objectives"), crew);
    EXPECT_EQ(settings.named(editor), nullptr);
}

TEST(GroupObjectives, OpenOnAGroupThatIsDeletedDoNoHarm) {
    Column settings;
    settings.show();
    settings.click(objectives, crew);
    settings.view->customGroups.clear();
    settings.view->changed();
    settings.settle();
    EXPECT_EQ(settings.named(crew), nullptr);
}

TEST(GroupChips, TakeAnAttachmentAwayAndLeaveItsDoctrine) {
    Column settings;
    settings.home.makeFolder(settings.home.at("notes"));
    settings.first().attachedPaths = {settings.home.at("notes"), "/gone/plan.txt"};
    settings.first().doctrine = {"/gone/charter.txt"};
    settings.show();
    EXPECT_EQ(settings.named(QStringLiteral("notes"), crew)->property("symbol"),
              QStringLiteral("folder-fill"));
    EXPECT_EQ(settings.named(QStringLiteral("plan.txt"), crew)->property("symbol"),
              QStringLiteral("file-fill"));
    settings.click(QStringLiteral("Remove notes"), crew);
    settings.click(QStringLiteral("Remove plan.txt"), crew);
    EXPECT_THAT(settings.first().attachedPaths, IsEmpty());
    EXPECT_THAT(settings.first().doctrine, ElementsAre("/gone/charter.txt"));
    EXPECT_NE(settings.named(QStringLiteral("Doctrine"), crew), nullptr);
    settings.click(QStringLiteral("Remove charter.txt"), crew);
    EXPECT_EQ(settings.named(QStringLiteral("Doctrine"), crew), nullptr);
    EXPECT_THAT(settings.saved(), HasSubstr(R"("doctrine":[])"));
}

TEST(GroupChips, ExistOnlyWhereTheyAreInSight) {
    Column settings;
    for (int i = 0; i < 3000; ++i) {
        settings.first().attachedPaths.push_back("/gone/file " + std::to_string(i) + ".txt");
    }
    settings.show();
    EXPECT_NE(settings.named(QStringLiteral("file 0.txt"), crew), nullptr);
    EXPECT_EQ(settings.named(QStringLiteral("file 2999.txt"), crew), nullptr);
    settings.named(QStringLiteral("Remove file 0.txt"), crew)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(settings.page, Qt::Key_End);
    settings.settle();
    EXPECT_NE(settings.named(QStringLiteral("file 2999.txt"), crew), nullptr);
    EXPECT_EQ(settings.named(QStringLiteral("file 0.txt"), crew), nullptr);
    QTest::keyClick(settings.page, Qt::Key_Space);
    settings.settle();
    EXPECT_EQ(settings.first().attachedPaths.size(), 2999U);
    EXPECT_EQ(settings.first().attachedPaths.back(), "/gone/file 2998.txt");
}

TEST(GroupAttach, AsksForFilesAndTakesThoseChosen) {
    Column settings;
    settings.write(settings.home.at("folder/mission.txt"), "Fly.");
    settings.write(settings.home.at("folder/other.bin"), "x");
    settings.show();
    QFileDialog* dialog = settings.ask(QStringLiteral("Files…"));
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFiles);
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), QStringLiteral("Attach"));
    emit dialog->filesSelected({toQString(settings.home.at("folder/mission.txt")),
                                toQString(settings.home.at("folder/other.bin"))});
    dialog->close();
    EXPECT_THAT(settings.first().attachedPaths, ElementsAre(settings.home.at("folder/mission.txt"),
                                                            settings.home.at("folder/other.bin")));
    EXPECT_THAT(settings.first().doctrine, ElementsAre(settings.home.at("folder/mission.txt")));
    settings.settle(); // chips come with the next frame
    EXPECT_NE(settings.named(QStringLiteral("other.bin"), crew), nullptr);
}

TEST(GroupAttach, AsksForAFolderAndChangesNothingWhenItIsCancelled) {
    Column settings;
    settings.show();
    QFileDialog* dialog = settings.ask(QStringLiteral("Folder…"));
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    dialog->reject();
    settings.settle();
    EXPECT_THAT(settings.first().attachedPaths, IsEmpty());
    EXPECT_EQ(settings.saved(), "");
}

TEST(GroupAttach, IsForgottenWithItsGroup) {
    Column settings;
    settings.show();
    QFileDialog* dialog = settings.ask(QStringLiteral("Folder…"));
    ASSERT_NE(dialog, nullptr);
    settings.view->customGroups.clear();
    settings.view->changed();
    settings.settle();
    emit dialog->filesSelected({toQString(settings.home.path())});
    dialog->close();
    EXPECT_EQ(settings.saved(), "");
}

TEST(GroupAttach, TakesFilesDroppedOnTheButtonOnce) {
    Column settings;
    settings.home.makeFolder(settings.home.at("notes"));
    settings.show();
    const QPoint at = middleOf(settings.named(attach, crew));
    for (int turn = 0; turn < 2; ++turn) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(toQString(settings.home.at("notes")))});
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        for (QEvent* event : std::initializer_list<QEvent*>{&enter, &move, &drop}) {
            QCoreApplication::sendEvent(settings.page, event);
        }
    }
    EXPECT_THAT(settings.first().attachedPaths, ElementsAre(settings.home.at("notes")));
}

} // namespace
} // namespace varnhold::testing
