// Dragging by keys alone.

#include <QAccessible>
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <utility>
#include <vector>

#include "dragging_board.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
class DraggingByKeys : public ::testing::Test {
protected:
    [[nodiscard]] QString spoken() const {
        return QAccessible::queryAccessibleInterface(board.find(u"announcer"_s))
            ->text(QAccessible::Name);
    }
    [[nodiscard]] QStringList outcome() const {
        return board.told.filter(QRegularExpression(u"^(?!began)"_s));
    }
    [[nodiscard]] QString order() const { return Board::uids(board.first).join(QString()); }

    Board board;
};

TEST_F(DraggingByKeys, SpacePicksUpAndSaysWhere) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space});
    EXPECT_TRUE(board.keyboard().active());
    EXPECT_EQ(board.told, QStringList{u"began l0"_s});
    EXPECT_EQ(spoken(), u"Model l0: Shelf"_s);
    EXPECT_TRUE(board.find(u"shelf"_s)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, ArrowsAndTabGoThroughTheZonesOfItsKind) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space});
    const std::vector<std::pair<Qt::Key, QString>> steps{
        {Qt::Key_Tab, u"First"_s},      {Qt::Key_Down, u"Second"_s}, {Qt::Key_Right, u"Shelf"_s},
        {Qt::Key_Backtab, u"Second"_s}, {Qt::Key_Up, u"First"_s},    {Qt::Key_Left, u"Shelf"_s}};
    for (const auto& [key, zone] : steps) {
        QTest::keyClick(board.page, key);
        EXPECT_EQ(spoken(), u"Model l0: "_s + zone);
    }
}

TEST_F(DraggingByKeys, ShiftAndTabGoBack) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space});
    QTest::keyClick(board.page, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(spoken(), u"Model l0: Second"_s);
}

TEST_F(DraggingByKeys, EnterDropsOnTheZone) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(outcome(), QStringList{u"First zone l0"_s});
    EXPECT_FALSE(board.keyboard().active());
    EXPECT_EQ(spoken(), u"Model l0 dropped: First"_s);
    EXPECT_FALSE(board.find(u"first"_s)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, SpaceDropsToo) {
    board.keys(board.source(u"l1"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(outcome(), QStringList{u"Second zone l1"_s});
}

TEST_F(DraggingByKeys, EscapeGivesUp) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Escape});
    EXPECT_EQ(outcome(), QStringList());
    EXPECT_EQ(spoken(), u"Model l0 not moved"_s);
    EXPECT_FALSE(board.find(u"first"_s)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, EscapeBringsARowBackToItsPlace) {
    board.keys(board.source(u"b"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down});
    EXPECT_EQ(order(), u"acdb"_s);
    QTest::keyClick(board.page, Qt::Key_Escape);
    EXPECT_EQ(order(), u"abcd"_s);
    EXPECT_EQ(spoken(), u"Model b not moved"_s);
    EXPECT_FALSE(board.keyboard().active());
}

TEST_F(DraggingByKeys, EscapeBringsARowBackFromAnotherListToo) {
    board.keys(board.source(u"b"_s), {Qt::Key_Space, Qt::Key_Up});
    EXPECT_EQ(order(), u"bacd"_s);
    for (int step = 0; step < 6 && !spoken().contains(u"Second"_s); ++step) {
        QTest::keyClick(board.page, Qt::Key_Down);
    }
    QTest::keyClick(board.page, Qt::Key_Escape);
    EXPECT_EQ(order(), u"abcd"_s);
    EXPECT_EQ(Board::uids(board.second), (QStringList{u"x"_s, u"y"_s}));
}

TEST_F(DraggingByKeys, ARowThatWasDroppedStays) {
    board.keys(board.source(u"b"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(order(), u"acbd"_s);
    board.keys(board.source(u"b"_s), {Qt::Key_Space, Qt::Key_Escape});
    EXPECT_EQ(order(), u"acbd"_s);
}

TEST_F(DraggingByKeys, ARowChangesPlacesInItsList) {
    board.keys(board.source(u"b"_s), {Qt::Key_Space});
    EXPECT_EQ(spoken(), u"Model b: First rows, place 2 of 4"_s);
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), u"acbd"_s);
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), u"acdb"_s);
    EXPECT_EQ(spoken(), u"Model b: First rows, place 4 of 4"_s);
    QTest::keyClick(board.page, Qt::Key_Up);
    EXPECT_EQ(order(), u"acbd"_s);
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome().last(), u"First row b"_s);
}

TEST_F(DraggingByKeys, TheOwnerIsRemindedAtEachStep) {
    board.keys(board.source(u"b"_s), {Qt::Key_Space});
    board.note(QString()); // as the record forgets after a while
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), u"acbd"_s);
    board.note(QString());
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(board.dragged, u"b"_s);
}

TEST_F(DraggingByKeys, ARowGoesToAnotherList) {
    board.keys(board.source(u"d"_s), {Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return});
    EXPECT_EQ(outcome().last(), u"Second zone d"_s);
}

TEST_F(DraggingByKeys, ABotGoesToZonesOfItsKindOnly) {
    board.keys(board.find(u"bot"_s), {Qt::Key_Space});
    EXPECT_EQ(spoken(), u"Bot: Bots"_s);
    QTest::keyClick(board.page, Qt::Key_Tab);
    EXPECT_EQ(spoken(), u"Bot: Alone"_s);
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome(), QStringList{u"Alone list com.example.bot"_s});
}

TEST_F(DraggingByKeys, OutlivesTheRowItBeganOn) {
    board.keys(board.source(u"a"_s), {Qt::Key_Space});
    Board::fill(board.first, {u"b"_s, u"c"_s});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::keyClick(board.page, Qt::Key_Tab);
    EXPECT_TRUE(board.keyboard().active());
    while (board.keyboard().active() && spoken() != u"Model a: Second"_s) {
        QTest::keyClick(board.page, Qt::Key_Tab);
    }
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome().last(), u"Second zone a"_s);
}

TEST_F(DraggingByKeys, ADropOnARowThatHasGoneGivesUp) {
    board.keys(board.source(u"d"_s), {Qt::Key_Space});
    Board::fill(board.first, {u"a"_s});
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_FALSE(board.keyboard().active());
    EXPECT_EQ(outcome(), QStringList{u"First entered d"_s});
}

TEST_F(DraggingByKeys, APressOfThePointerGivesUp) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space, Qt::Key_Down});
    board.press(board.middle(u"bots"_s));
    EXPECT_FALSE(board.keyboard().active());
    board.release();
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome(), QStringList());
}

TEST_F(DraggingByKeys, ACommandOfTheKeyboardGivesUp) {
    board.keys(board.source(u"l0"_s), {Qt::Key_Space, Qt::Key_Down});
    QTest::keyClick(board.page, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(board.keyboard().active());
}

TEST(DraggingByKeysInASmallWindow, ShowsWhereItIs) {
    Board board({700, 200});
    QQuickItem* scroll = board.find(u"scroll"_s);
    board.keys(board.source(u"l0"_s), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down});
    QQuickItem* second = board.find(u"second"_s);
    const QRectF seen = second->mapRectToItem(scroll, QRectF({}, second->size()));
    EXPECT_GE(seen.top(), 0);
    EXPECT_LE(seen.bottom(), scroll->height());
    QTest::keyClick(board.page, Qt::Key_Up);
    EXPECT_EQ(scroll->property("contentY").toReal(), 0);
}

} // namespace
} // namespace varnhold::testing
