#include <string>

#include "shown_sheets.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* divider = "Width of the left pane";

struct Arrangement : ::testing::Test, ShownSheets {
    [[nodiscard]] QQuickItem* part(const char* name) const {
        return page->rootObject()->findChild<QQuickItem*>(QString::fromUtf8(name));
    }
    [[nodiscard]] qreal widthOf(const char* name) const { return part(name)->width(); }
    [[nodiscard]] QRectF place(const QQuickItem* item) const {
        return {item->mapToScene({0, 0}), QSizeF(item->width(), item->height())};
    }
    [[nodiscard]] QRectF placeOf(const char* name, QAccessible::Role role) const {
        const QQuickItem* item = announced(page->rootObject(), QString::fromUtf8(name), role);
        EXPECT_NE(item, nullptr) << name;
        return item == nullptr ? QRectF() : place(item);
    }
    // Of what stands in the section of that title.
    [[nodiscard]] QRectF placeIn(const char* section, const char* name) const {
        QQuickItem* around =
            announced(page->rootObject(), QString::fromUtf8(section), QAccessible::Grouping);
        EXPECT_NE(around, nullptr) << section;
        const QQuickItem* item = announced(around, QString::fromUtf8(name));
        EXPECT_NE(item, nullptr) << name;
        return item == nullptr ? QRectF() : place(item);
    }
    void drag(const QPoint& from, const QPoint& to) const {
        QTest::mousePress(page, Qt::LeftButton, {}, from);
        QTest::mouseMove(page, (from + to) / 2);
        QTest::mouseMove(page, to);
        QTest::mouseRelease(page, Qt::LeftButton, {}, to);
    }
};

TEST_F(Arrangement, HasALeftPaneOfItsIdealWidthAndGivesTheRestToTheRight) {
    show();
    EXPECT_EQ(widthOf("leftPane"), 280);
    EXPECT_EQ(widthOf("rightPane"), 1200 - 280 - 1);
    EXPECT_EQ(place(part("rightPane")).right(), 1200);
    EXPECT_EQ(place(part("leftPane")).height(), 850);
}

TEST_F(Arrangement, HasItsResetAtTheFootOfTheRightPane) {
    show();
    const QRectF right = place(part("rightPane"));
    const QRectF reset = place(named(QStringLiteral("Reset")));
    EXPECT_TRUE(right.contains(reset));
    EXPECT_GT(reset.top(), 850 - 40);
    EXPECT_LT(reset.left(), right.left() + 40);
}

TEST_F(Arrangement, TheDividerFollowsThePointerBetweenItsBounds) {
    show();
    const QPoint grip = middleOf(named(QString::fromUtf8(divider)));
    drag(grip, grip + QPoint(25, 0));
    EXPECT_EQ(widthOf("leftPane"), 305);
    drag(grip + QPoint(25, 0), grip + QPoint(300, 0));
    EXPECT_EQ(widthOf("leftPane"), 320);
    drag(grip + QPoint(40, 0), grip - QPoint(250, 0));
    EXPECT_EQ(widthOf("leftPane"), 260);
    EXPECT_EQ(widthOf("rightPane"), 1200 - 260 - 1);
}

TEST_F(Arrangement, TheDividerFollowsTheKeysBetweenItsBounds) {
    show();
    focus(divider);
    press(Qt::Key_Right);
    EXPECT_EQ(widthOf("leftPane"), 290);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(widthOf("leftPane"), 260);
    press(Qt::Key_End);
    EXPECT_EQ(widthOf("leftPane"), 320);
    press(Qt::Key_Home);
    EXPECT_EQ(widthOf("leftPane"), 260);
}

TEST_F(Arrangement, TheTopBlockAndTheChainsShareTheirEdges) {
    show();
    for (const QSize& size : {QSize(1200, 850), QSize(1400, 3000)}) {
        window.resize(size);
        QCoreApplication::processEvents();
        static_cast<void>(page->grabFramebuffer());
        const QRectF architect = placeOf("Architect Chain", QAccessible::Grouping);
        EXPECT_NEAR(placeOf("Providers", QAccessible::Heading).left(), architect.left(), 0.01);
        EXPECT_NEAR(place(named(QStringLiteral("Reset"))).left(), architect.left(), 0.01);
        EXPECT_NEAR(place(named(QStringLiteral("Hints"))).right(),
                    placeOf("Coding Chain", QAccessible::Grouping).right(), 0.01);
        EXPECT_NEAR(placeOf("Audio Chain", QAccessible::Grouping).right(),
                    placeOf("Coding Chain", QAccessible::Grouping).right(), 0.01);
        const QQuickItem* foot = part("foot");
        ASSERT_NE(foot, nullptr);
        EXPECT_TRUE(foot->isVisible());
        EXPECT_NEAR(place(foot).bottom(), place(part("topBlock")).bottom(), 0.01);
    }
}

TEST_F(Arrangement, RowsEndWhereTheirHeadingsDoWhetherOrNotTheyScroll) {
    view->userBots = {varnhold::testing::bot("ops")};
    for (int i = 0; i < 30; ++i) {
        const std::string id = "m" + std::to_string(i);
        view->directModels.push_back(varnhold::testing::model(id));
    }
    show();
    const qreal right = place(named(QStringLiteral("Add a model to the library"))).right();
    EXPECT_NEAR(placeOf("Model m0", QAccessible::ListItem).right(), right, 0.01);
    EXPECT_NEAR(placeOf("Model m0", QAccessible::ListItem).left(),
                placeOf("Library", QAccessible::Heading).left(), 0.01);
    for (const QQuickItem* row : page->rootObject()->findChildren<QQuickItem*>()) {
        if (QByteArray(row->metaObject()->className()).startsWith("BotRow")) {
            EXPECT_NEAR(place(row).right(), right, 0.01);
            EXPECT_NEAR(place(row).left(), placeOf("Bots", QAccessible::Heading).left(), 0.01);
        }
    }
}

TEST_F(Arrangement, TheArrowsOfSteppersLineUp) {
    show();
    for (const char* arrow : {"Less ", "More "}) {
        EXPECT_NEAR(placeIn("Architect Chain", (std::string(arrow) + "Effort").c_str()).left(),
                    placeIn("Architect Chain", (std::string(arrow) + "Context").c_str()).left(),
                    0.01);
    }
}

TEST_F(Arrangement, ZonesOfSectionsSideBySideLineUp) {
    for (const char* role : {"a", "b", "c"}) {
        view->userBots.push_back(varnhold::testing::bot(role));
        view->chainBotAssignments["worker"].push_back(view->userBots.back().launchdLabel);
    }
    show({1200, 3000});
    const QRectF architect = placeIn("Architect Chain", "Bots of Architect Chain");
    const QRectF worker = placeIn("Coding Chain", "Bots of Coding Chain");
    EXPECT_NEAR(architect.top(), worker.top(), 0.01);
    EXPECT_NEAR(architect.height(), worker.height(), 0.01);
    EXPECT_GT(worker.height(), 60);
    EXPECT_NEAR(placeIn("Architect Chain", "Top of Architect Chain").top(),
                placeIn("Coding Chain", "Top of Coding Chain").top(), 0.01);
    for (const char* zone : {"Bots of ", "Top of "}) {
        EXPECT_NEAR(placeIn("Photo Chain", (std::string(zone) + "Photo Chain").c_str()).top(),
                    placeIn("Audio Chain", (std::string(zone) + "Audio Chain").c_str()).top(),
                    0.01);
    }
}

TEST_F(Arrangement, TheGroupsStandAsFarInTheirColumnAsTheGovernorInItsCard) {
    view->customGroups = {CustomBotGroup{.name = "Crew"}};
    show();
    const QRectF governor = placeOf("⚖️ Governor Chain", QAccessible::Grouping);
    const QRectF crew = placeOf("Crew", QAccessible::Grouping);
    EXPECT_NEAR(crew.top(), governor.top(), 0.01);
    EXPECT_NEAR(crew.left() - governor.right(), 3 * 8, 0.01);
}

TEST_F(Arrangement, ALargerWindowGivesItsRoomToThePanes) {
    show({1500, 1000});
    EXPECT_EQ(widthOf("leftPane"), 280);
    EXPECT_EQ(widthOf("rightPane"), 1500 - 280 - 1);
    EXPECT_EQ(place(part("rightPane")).bottom(), 1000);
    EXPECT_GT(place(named(QStringLiteral("Reset"))).top(), 960);
}

TEST_F(Arrangement, ASmallerWindowScrollsInsteadOfCutting) {
    view->workerModels = {varnhold::testing::model("worker")};
    show({800, 500});
    EXPECT_EQ(place(part("rightPane")).size(), QSizeF(1200 - 280 - 1, 850));
    const QQuickItem* reset = named(QStringLiteral("Reset"));
    EXPECT_GT(place(reset).top(), 500);
    focus("Reset"); // the keyboard brings it into view
    EXPECT_TRUE(QTest::qWaitFor([&] { return QRectF(0, 0, 800, 500).contains(place(reset)); }));
    click("Reset");
    EXPECT_THAT(view->workerModels, IsEmpty());
}

TEST_F(Arrangement, ResetEmptiesTheChainsAndLeavesTheAudioChainFilled) {
    fill(*view);
    write(constants.modelLibraryFile, encodeLibrary({{varnhold::testing::model("new")}}));
    show();
    click("Reset");
    for (const std::string& path :
         {constants.workerPrefsFile, constants.architectPrefsFile, constants.photoPrefsFile,
          constants.videoPrefsFile, constants.governorChainFile}) {
        EXPECT_EQ(read(path), "[]") << path;
    }
    EXPECT_THAT(*readChain(constants.voicePrefsFile),
                ElementsAre(varnhold::testing::model("voice")));
    EXPECT_THAT(view->directModels, SizeIs(1)); // the library was read again
    EXPECT_EQ(saves(), 1);
    EXPECT_TRUE(model->sheets()->toastShown());
    EXPECT_EQ(model->sheets()->standing(), QString()); // nobody asks first
}

TEST_F(Arrangement, ResetTellsWhatItEmptiesBeforeItDoes) {
    show();
    EXPECT_EQ(named(QStringLiteral("Reset"))->property("help").toString(),
              QStringLiteral("Empties all chains but Audio"));
    EXPECT_TRUE(named(QStringLiteral("Reset"))->property("destructive").toBool());
}

TEST_F(Arrangement, ResetIsPressedByTheKeyboardToo) {
    fill(*view);
    show();
    focus("Reset");
    press(Qt::Key_Space);
    EXPECT_THAT(view->architectModels, IsEmpty());
}

} // namespace
} // namespace varnhold::testing
