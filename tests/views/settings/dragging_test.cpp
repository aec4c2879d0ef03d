// Dragging by pointer on a page of its own: the gesture is real, and what a platform does with it
// comes from a script.

#include <QRegularExpression>
#include <QUrl>
#include <gmock/gmock.h>

#include "dragging_board.h"

namespace varnhold::testing {
namespace {

QString operator""_q(const char* text, std::size_t length) {
    return QString::fromUtf8(text, static_cast<qsizetype>(length));
}

class Dragging : public ::testing::Test {
protected:
    [[nodiscard]] QPoint libraryRow(int row) const {
        return board.row("library"_q, row) - QPoint(0, 30);
    }
    [[nodiscard]] QPoint freeSpace() const { return board.row("first"_q, 4); }
    // What was told beside the beginning of the drag.
    [[nodiscard]] QStringList outcome() const {
        return board.told.filter(QRegularExpression("^(?!began)"_q));
    }
    [[nodiscard]] bool hovered(const QString& zone) const {
        return board.find(zone)->property("hovered").toBool();
    }

    Board board;
};

TEST_F(Dragging, TheGestureCarriesTextAndPictureOfItsRow) {
    board.drag(libraryRow(1), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(board.session().active());
        EXPECT_EQ(board.session().payload(), "l1"_q);
        EXPECT_EQ(board.session().kind(), "model"_q);
        EXPECT_EQ(drag.picture.deviceIndependentSize(), QSizeF(140, 30));
        EXPECT_EQ(drag.hotSpot, QPoint(60, 15));
    });
    EXPECT_EQ(board.told, QStringList{"began l1"_q});
    EXPECT_FALSE(board.session().active());
    EXPECT_EQ(board.session().kind(), QString());
}

TEST_F(Dragging, FreeSpaceUnderTheRowsBelongsToTheZone) {
    EXPECT_TRUE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(freeSpace()));
        EXPECT_TRUE(hovered("first"_q));
        EXPECT_FALSE(hovered("second"_q));
        EXPECT_TRUE(drag.drop(freeSpace()));
    }));
    EXPECT_EQ(outcome(), QStringList{"First zone l0"_q});
    EXPECT_FALSE(hovered("first"_q));
}

TEST_F(Dragging, SpaceBetweenRowsBelongsToTheZone) {
    const QPoint between = board.row("first"_q, 1) + QPoint(0, 18);
    board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(between));
        EXPECT_TRUE(hovered("first"_q));
        drag.drop(between);
    });
    EXPECT_EQ(outcome(), QStringList{"First zone l0"_q});
}

TEST_F(Dragging, ARowConsumesWhatIsDroppedOnIt) {
    EXPECT_TRUE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(board.row("first"_q, 1)));
        EXPECT_FALSE(hovered("first"_q));
        EXPECT_TRUE(drag.drop(board.row("first"_q, 1)));
    }));
    EXPECT_EQ(outcome(), (QStringList{"First entered b"_q, "First row b"_q}));
}

TEST_F(Dragging, RowsGoFromListToList) {
    EXPECT_TRUE(board.drag(board.row("second"_q, 0),
                           [&](ScriptedDrag& drag) { EXPECT_TRUE(drag.drop(freeSpace())); }));
    EXPECT_EQ(outcome(), QStringList{"First zone x"_q});
}

TEST_F(Dragging, RowsChangePlacesWhileDraggedAndSwingToRest) {
    QQuickItem* dragged = board.source("a"_q);
    EXPECT_TRUE(board.drag(board.row("first"_q, 0), [&](ScriptedDrag& drag) {
        drag.over(board.row("first"_q, 0));
        drag.over(board.row("first"_q, 1));
        EXPECT_EQ(Board::uids(board.first).join(""_q), "bacd"_q);
        drag.over(board.row("first"_q, 1) + QPoint(3, 3)); // the dragged row itself by now
        EXPECT_EQ(Board::uids(board.first).join(""_q), "bacd"_q);
        drag.over(board.row("first"_q, 3));
        EXPECT_EQ(Board::uids(board.first).join(""_q), "bcda"_q);
        EXPECT_NE(dragged->y(), 3 * 36); // on its way
        drag.over(board.row("first"_q, 0));
        EXPECT_EQ(Board::uids(board.first).join(""_q), "abcd"_q);
        drag.drop(board.row("first"_q, 2));
    }));
    EXPECT_EQ(Board::uids(board.first).join(""_q), "bcad"_q);
    EXPECT_EQ(outcome().last(), "First row a"_q);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dragged->y() == 2 * 36; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return board.source("d"_q)->y() == 3 * 36; }));
}

TEST_F(Dragging, AKindThatIsNotTakenIsNotDropped) {
    EXPECT_FALSE(board.drag(board.middle("bot"_q), [&](ScriptedDrag& drag) {
        EXPECT_FALSE(drag.over(freeSpace()));
        EXPECT_FALSE(hovered("first"_q));
        EXPECT_FALSE(drag.over(board.row("first"_q, 1)));
        EXPECT_TRUE(drag.over(board.middle("bots"_q)));
        EXPECT_TRUE(hovered("bots"_q));
        EXPECT_FALSE(drag.drop(freeSpace()));
    }));
    EXPECT_EQ(outcome(), QStringList());
    EXPECT_TRUE(board.drag(board.middle("bot"_q),
                           [&](ScriptedDrag& drag) { drag.drop(board.middle("bots"_q)); }));
    EXPECT_EQ(outcome(), QStringList{"Bots zone com.example.bot"_q});
}

TEST_F(Dragging, AListWithoutZoneHasItsFreeSpaceForItself) {
    board.drag(board.middle("bot"_q),
               [&](ScriptedDrag& drag) { drag.drop(board.middle("alone"_q) + QPoint(0, 40)); });
    board.drag(board.middle("bot"_q),
               [&](ScriptedDrag& drag) { drag.drop(board.middle("alone"_q) - QPoint(0, 60)); });
    EXPECT_EQ(outcome(), (QStringList{"Alone list com.example.bot"_q, "Alone row x"_q}));
}

TEST_F(Dragging, ADragThatEndsElsewhereLeavesNothingBehind) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
            drag.over(freeSpace());
            drag.leave();
            EXPECT_FALSE(hovered("first"_q));
        }));
        EXPECT_FALSE(board.session().active());
    }
    EXPECT_EQ(board.told, (QStringList{"began l0"_q, "began l0"_q}));
}

TEST_F(Dragging, OutlivesItsRow) {
    EXPECT_TRUE(board.drag(board.row("first"_q, 0), [&](ScriptedDrag& drag) {
        drag.over(board.row("first"_q, 0));
        Board::fill(board.first, {"b"_q, "c"_q, "d"_q});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(board.source("a"_q), nullptr);
        drag.over(board.row("first"_q, 1));
        EXPECT_TRUE(drag.drop(board.row("second"_q, 2)));
    }));
    EXPECT_EQ(outcome().last(), "Second zone a"_q);
}

TEST_F(Dragging, OutlivesItsRowEvenBeforeThePicture) {
    board.session().setCarrier([](QDrag&) { return Qt::IgnoreAction; });
    QStringList ended;
    QObject::connect(&board.session(), &DragSession::finished, &board,
                     [&ended](const QString& payload) { ended.append(payload); });
    board.session().start(board.source("a"_q), "a"_q, "model"_q, 0, 0);
    Board::fill(board.first, {});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(QTest::qWaitFor([&ended] { return !ended.isEmpty(); }));
    EXPECT_EQ(ended, QStringList{"a"_q});
}

TEST_F(Dragging, ListsMayChangeInFlight) {
    EXPECT_TRUE(board.drag(board.row("first"_q, 3), [&](ScriptedDrag& drag) {
        const QPoint at = board.row("first"_q, 1);
        for (const char* order : {"abcd", "dcba", "d", "", "edc", "xdyz", "abcd", "badc"}) {
            Board::fill(board.first,
                        QString::fromLatin1(order).split(QString(), Qt::SkipEmptyParts));
            drag.over(at);
        }
        Board::fill(board.first, {"d"_q, "e"_q});
        board.told.clear();
        EXPECT_TRUE(drag.drop(at));
    }));
    EXPECT_EQ(board.told, (QStringList{"First row e"_q}));
}

TEST_F(Dragging, ThereIsNeverASecondDrag) {
    board.drag(libraryRow(0), [&](ScriptedDrag&) {
        board.session().start(board.source("a"_q), "a"_q, "model"_q, 0, 0);
        EXPECT_EQ(board.session().payload(), "l0"_q);
        board.keys(board.source("a"_q), {Qt::Key_Space});
        EXPECT_FALSE(board.keyboard().active());
    });
    EXPECT_FALSE(board.session().active());
}

TEST_F(Dragging, NothingIsDraggedOnceTheButtonIsUp) {
    int carried = 0;
    board.session().setCarrier([&carried](QDrag&) {
        ++carried;
        return Qt::IgnoreAction;
    });
    board.session().start(board.source("a"_q), "a"_q, "model"_q, 0, 0);
    EXPECT_TRUE(board.session().active());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board.session().active(); }));
    EXPECT_EQ(carried, 0);
}

TEST_F(Dragging, TextOfOtherProgramsIsTaken) {
    QMimeData text;
    text.setText("some text\r\n"_q);
    for (const char* zone : {"first", "bots"}) {
        ScriptedDrag drag(board.window.windowHandle(), text);
        const QPoint at =
            QString::fromLatin1(zone) == "first"_q ? freeSpace() : board.middle("bots"_q);
        EXPECT_TRUE(drag.over(at));
        EXPECT_TRUE(hovered(QString::fromLatin1(zone)));
        EXPECT_TRUE(drag.drop(at));
    }
    EXPECT_EQ(board.told, (QStringList{"First zone some text"_q, "Bots zone some text"_q}));
}

TEST_F(Dragging, OnlyOneLineBreakIsCutOff) {
    EXPECT_EQ(DragSession::textOf("a\n\n"_q), "a\n"_q);
    EXPECT_EQ(DragSession::textOf(" a b \n"_q), " a b "_q);
    EXPECT_EQ(DragSession::textOf("a"_q), "a"_q);
    EXPECT_EQ(DragSession::textOf(QString()), QString());
}

TEST_F(Dragging, FilesOfOtherProgramsAreNoText) {
    QMimeData files;
    files.setUrls({QUrl("file:///tmp/a"_q)});
    ScriptedDrag drag(board.window.windowHandle(), files);
    EXPECT_FALSE(drag.drop(freeSpace()));
    EXPECT_EQ(board.told, QStringList());
}

TEST(DraggingNearAnEdge, ScrollsAndTellsWhatComesUnderThePointer) {
    Board board({700, 250});
    QQuickItem* scroll = board.find("scroll"_q);
    const qreal bottom = scroll->property("contentHeight").toReal() - scroll->height();
    ASSERT_GT(bottom, 100);
    const QPoint nearBottom = scroll->mapToScene({60, scroll->height() - 4}).toPoint();
    const QPoint nearTop = scroll->mapToScene({60, 4}).toPoint();
    const auto scrolledTo = [scroll](qreal y) {
        return QTest::qWaitFor([=] { return scroll->property("contentY").toReal() == y; });
    };
    board.drag(board.row("library"_q, 0) - QPoint(0, 30), [&](ScriptedDrag& drag) {
        drag.over(nearBottom);
        EXPECT_TRUE(scrolledTo(bottom));
        // The second zone has come under the pointer, which has rested all the while.
        EXPECT_TRUE(board.find("second"_q)->property("hovered").toBool());
        EXPECT_FALSE(board.find("first"_q)->property("hovered").toBool());
        drag.over(nearTop);
        EXPECT_TRUE(scrolledTo(0));
    });
}

TEST(DraggingInAScrollingArea, UpAndDownDragsAndDoesNotScroll) {
    for (const int by : {16, -16, 120, -120}) {
        Board board({700, 250});
        QQuickItem* scroll = board.find("scroll"_q);
        board.drag(board.row("first"_q, 2), [](ScriptedDrag&) {}, {0, by});
        EXPECT_EQ(board.told, QStringList{"began c"_q});
        EXPECT_EQ(scroll->property("contentY").toReal(), 0);
    }
}

TEST(DraggingNearAnEdge, ScrollsUnderWhatNobodyThereTakes) {
    Board board({700, 250});
    QQuickItem* scroll = board.find("scroll"_q);
    board.drag(board.middle("bot"_q), [&](ScriptedDrag& drag) {
        EXPECT_FALSE(drag.over(scroll->mapToScene({60, scroll->height() - 4}).toPoint()));
        EXPECT_TRUE(QTest::qWaitFor([=] { return scroll->property("contentY").toReal() > 40; }));
    });
}

} // namespace
} // namespace varnhold::testing
