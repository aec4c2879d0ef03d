// Dragging by keys alone.

#include <QAccessible>
#include <QRegularExpression>
#include <gmock/gmock.h>

#include "dragging_board.h"

namespace varnhold::testing {
namespace {

QString operator""_q(const char* text, std::size_t length) {
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

class DraggingByKeys : public ::testing::Test {
protected:
    [[nodiscard]] QString spoken() const {
        return QAccessible::queryAccessibleInterface(board.find("announcer"_q))
            ->text(QAccessible::Name);
    }
    [[nodiscard]] QStringList outcome() const {
        return board.told.filter(QRegularExpression("^(?!began)"_q));
    }
    [[nodiscard]] QString order() const { return Board::uids(board.first).join(QString()); }

    Board board;
};

TEST_F(DraggingByKeys, SpacePicksUpAndSaysWhere) {
    board.keys(board.source("l0"_q), {Qt::Key_Space});
    EXPECT_TRUE(board.keyboard().active());
    EXPECT_EQ(board.told, QStringList{"began l0"_q});
    EXPECT_EQ(spoken(), "Model l0: Shelf"_q);
    EXPECT_TRUE(board.find("shelf"_q)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, ArrowsAndTabGoThroughTheZonesOfItsKind) {
    board.keys(board.source("l0"_q), {Qt::Key_Space});
    const std::vector<std::pair<Qt::Key, QString>> steps{
        {Qt::Key_Tab, "First"_q},      {Qt::Key_Down, "Second"_q}, {Qt::Key_Right, "Shelf"_q},
        {Qt::Key_Backtab, "Second"_q}, {Qt::Key_Up, "First"_q},    {Qt::Key_Left, "Shelf"_q}};
    for (const auto& [key, zone] : steps) {
        QTest::keyClick(board.page, key);
        EXPECT_EQ(spoken(), "Model l0: "_q + zone);
    }
}

TEST_F(DraggingByKeys, ShiftAndTabGoBack) {
    board.keys(board.source("l0"_q), {Qt::Key_Space});
    QTest::keyClick(board.page, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(spoken(), "Model l0: Second"_q);
}

TEST_F(DraggingByKeys, EnterDropsOnTheZone) {
    board.keys(board.source("l0"_q), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
    EXPECT_EQ(outcome(), QStringList{"First zone l0"_q});
    EXPECT_FALSE(board.keyboard().active());
    EXPECT_EQ(spoken(), "Model l0 dropped: First"_q);
    EXPECT_FALSE(board.find("first"_q)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, SpaceDropsToo) {
    board.keys(board.source("l1"_q), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(outcome(), QStringList{"Second zone l1"_q});
}

TEST_F(DraggingByKeys, EscapeGivesUp) {
    board.keys(board.source("l0"_q), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Escape});
    EXPECT_EQ(outcome(), QStringList());
    EXPECT_EQ(spoken(), "Model l0 not moved"_q);
    EXPECT_FALSE(board.find("first"_q)->property("hovered").toBool());
}

TEST_F(DraggingByKeys, ARowChangesPlacesInItsList) {
    board.keys(board.source("b"_q), {Qt::Key_Space});
    EXPECT_EQ(spoken(), "Model b: First rows, place 2 of 4"_q);
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), "acbd"_q);
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), "acdb"_q);
    EXPECT_EQ(spoken(), "Model b: First rows, place 4 of 4"_q);
    QTest::keyClick(board.page, Qt::Key_Up);
    EXPECT_EQ(order(), "acbd"_q);
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome().last(), "First row b"_q);
}

TEST_F(DraggingByKeys, TheOwnerIsRemindedAtEachStep) {
    board.keys(board.source("b"_q), {Qt::Key_Space});
    board.note(QString()); // as the record forgets after a while
    QTest::keyClick(board.page, Qt::Key_Down);
    EXPECT_EQ(order(), "acbd"_q);
    board.note(QString());
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(board.dragged, "b"_q);
}

TEST_F(DraggingByKeys, ARowGoesToAnotherList) {
    board.keys(board.source("d"_q), {Qt::Key_Space, Qt::Key_Tab, Qt::Key_Return});
    EXPECT_EQ(outcome().last(), "Second zone d"_q);
}

TEST_F(DraggingByKeys, ABotGoesToZonesOfItsKindOnly) {
    board.keys(board.find("bot"_q), {Qt::Key_Space});
    EXPECT_EQ(spoken(), "Bot: Bots"_q);
    QTest::keyClick(board.page, Qt::Key_Tab);
    EXPECT_EQ(spoken(), "Bot: Alone"_q);
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome(), QStringList{"Alone list com.example.bot"_q});
}

TEST_F(DraggingByKeys, OutlivesTheRowItBeganOn) {
    board.keys(board.source("a"_q), {Qt::Key_Space});
    Board::fill(board.first, {"b"_q, "c"_q});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTest::keyClick(board.page, Qt::Key_Tab);
    EXPECT_TRUE(board.keyboard().active());
    while (board.keyboard().active() && spoken() != "Model a: Second"_q) {
        QTest::keyClick(board.page, Qt::Key_Tab);
    }
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome().last(), "Second zone a"_q);
}

TEST_F(DraggingByKeys, ADropOnARowThatHasGoneGivesUp) {
    board.keys(board.source("d"_q), {Qt::Key_Space});
    Board::fill(board.first, {"a"_q});
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_FALSE(board.keyboard().active());
    EXPECT_EQ(outcome(), QStringList{"First entered d"_q});
}

TEST_F(DraggingByKeys, APressOfThePointerGivesUp) {
    board.keys(board.source("l0"_q), {Qt::Key_Space, Qt::Key_Down});
    board.press(board.middle("bots"_q));
    EXPECT_FALSE(board.keyboard().active());
    board.release();
    QTest::keyClick(board.page, Qt::Key_Return);
    EXPECT_EQ(outcome(), QStringList());
}

TEST_F(DraggingByKeys, ACommandOfTheKeyboardGivesUp) {
    board.keys(board.source("l0"_q), {Qt::Key_Space, Qt::Key_Down});
    QTest::keyClick(board.page, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(board.keyboard().active());
}

TEST(DraggingByKeysInASmallWindow, ShowsWhereItIs) {
    Board board({700, 200});
    QQuickItem* scroll = board.find("scroll"_q);
    board.keys(board.source("l0"_q), {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down});
    QQuickItem* second = board.find("second"_q);
    const QRectF seen = second->mapRectToItem(scroll, QRectF({}, second->size()));
    EXPECT_GE(seen.top(), 0);
    EXPECT_LE(seen.bottom(), scroll->height());
    QTest::keyClick(board.page, Qt::Key_Up);
    EXPECT_EQ(scroll->property("contentY").toReal(), 0);
}

} // namespace
} // namespace varnhold::testing
