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

TEST_F(Arrangement, ResetIsPressedByTheKeyboardToo) {
    fill(*view);
    show();
    focus("Reset");
    press(Qt::Key_Space);
    EXPECT_THAT(view->architectModels, IsEmpty());
}

} // namespace
} // namespace varnhold::testing
