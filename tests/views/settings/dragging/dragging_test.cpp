// Dragging by pointer on a page of its own: the gesture is real, and what a platform does with it
// comes from a script.

#include <QRegularExpression>
#include <QUrl>
#include <gmock/gmock.h>

#include "dragging_board.h"
#include "shown_item.h"

namespace varnhold::testing {
namespace {

using namespace Qt::StringLiterals;
class Dragging : public ::testing::Test {
protected:
    [[nodiscard]] QPoint libraryRow(int row) const {
        return board.row(u"library"_s, row) - QPoint(0, 30);
    }
    [[nodiscard]] QPoint freeSpace() const { return board.row(u"first"_s, 4); }
    // What was told beside the beginning of the drag.
    [[nodiscard]] QStringList outcome() const {
        return board.told.filter(QRegularExpression(u"^(?!began)"_s));
    }
    [[nodiscard]] bool hovered(const QString& zone) const {
        return board.find(zone)->property("hovered").toBool();
    }

    Board board;
};

TEST_F(Dragging, TheGestureCarriesTextAndPictureOfItsRow) {
    board.drag(libraryRow(1), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(board.session().active());
        EXPECT_EQ(board.session().payload(), u"l1"_s);
        EXPECT_EQ(board.session().kind(), u"model"_s);
        EXPECT_EQ(drag.picture.deviceIndependentSize(), QSizeF(140, 30));
        EXPECT_EQ(drag.hotSpot, QPoint(60, 15));
    });
    EXPECT_EQ(board.told, QStringList{u"began l1"_s});
    EXPECT_FALSE(board.session().active());
    EXPECT_EQ(board.session().kind(), QString());
}

TEST_F(Dragging, FreeSpaceUnderTheRowsBelongsToTheZone) {
    EXPECT_TRUE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(freeSpace()));
        EXPECT_TRUE(hovered(u"first"_s));
        EXPECT_FALSE(hovered(u"second"_s));
        EXPECT_TRUE(drag.drop(freeSpace()));
    }));
    EXPECT_EQ(outcome(), QStringList{u"First zone l0"_s});
    EXPECT_FALSE(hovered(u"first"_s));
}

TEST_F(Dragging, SpaceBetweenRowsBelongsToTheZone) {
    const QPoint between = board.row(u"first"_s, 1) + QPoint(0, 18);
    board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(between));
        EXPECT_TRUE(hovered(u"first"_s));
        drag.drop(between);
    });
    EXPECT_EQ(outcome(), QStringList{u"First zone l0"_s});
}

TEST_F(Dragging, ARowConsumesWhatIsDroppedOnIt) {
    EXPECT_TRUE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
        EXPECT_TRUE(drag.over(board.row(u"first"_s, 1)));
        EXPECT_FALSE(hovered(u"first"_s));
        EXPECT_TRUE(drag.drop(board.row(u"first"_s, 1)));
    }));
    EXPECT_EQ(outcome(), (QStringList{u"First entered b"_s, u"First row b"_s}));
}

TEST_F(Dragging, RowsGoFromListToList) {
    EXPECT_TRUE(board.drag(board.row(u"second"_s, 0),
                           [&](ScriptedDrag& drag) { EXPECT_TRUE(drag.drop(freeSpace())); }));
    EXPECT_EQ(outcome(), QStringList{u"First zone x"_s});
}

TEST_F(Dragging, RowsChangePlacesWhileDraggedAndSwingToRest) {
    QQuickItem* dragged = board.source(u"a"_s);
    EXPECT_TRUE(board.drag(board.row(u"first"_s, 0), [&](ScriptedDrag& drag) {
        drag.over(board.row(u"first"_s, 0));
        drag.over(board.row(u"first"_s, 1));
        EXPECT_EQ(Board::uids(board.first).join(u""_s), u"bacd"_s);
        drag.over(board.row(u"first"_s, 1) + QPoint(3, 3)); // the dragged row itself by now
        EXPECT_EQ(Board::uids(board.first).join(u""_s), u"bacd"_s);
        drag.over(board.row(u"first"_s, 3));
        EXPECT_EQ(Board::uids(board.first).join(u""_s), u"bcda"_s);
        EXPECT_NE(dragged->y(), 3 * 36); // on its way
        drag.over(board.row(u"first"_s, 0));
        EXPECT_EQ(Board::uids(board.first).join(u""_s), u"abcd"_s);
        drag.drop(board.row(u"first"_s, 2));
    }));
    EXPECT_EQ(Board::uids(board.first).join(u""_s), u"bcad"_s);
    EXPECT_EQ(outcome().last(), u"First row a"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dragged->y() == 2 * 36; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return board.source(u"d"_s)->y() == 3 * 36; }));
}

TEST_F(Dragging, AKindThatIsNotTakenIsNotDropped) {
    EXPECT_FALSE(board.drag(board.middle(u"bot"_s), [&](ScriptedDrag& drag) {
        EXPECT_FALSE(drag.over(freeSpace()));
        EXPECT_FALSE(hovered(u"first"_s));
        EXPECT_FALSE(drag.over(board.row(u"first"_s, 1)));
        EXPECT_TRUE(drag.over(board.middle(u"bots"_s)));
        EXPECT_TRUE(hovered(u"bots"_s));
        EXPECT_FALSE(drag.drop(freeSpace()));
    }));
    EXPECT_EQ(outcome(), QStringList());
    EXPECT_TRUE(board.drag(board.middle(u"bot"_s),
                           [&](ScriptedDrag& drag) { drag.drop(board.middle(u"bots"_s)); }));
    EXPECT_EQ(outcome(), QStringList{u"Bots zone com.example.bot"_s});
}

TEST_F(Dragging, AListWithoutZoneHasItsFreeSpaceForItself) {
    board.drag(board.middle(u"bot"_s),
               [&](ScriptedDrag& drag) { drag.drop(board.middle(u"alone"_s) + QPoint(0, 40)); });
    board.drag(board.middle(u"bot"_s),
               [&](ScriptedDrag& drag) { drag.drop(board.middle(u"alone"_s) - QPoint(0, 60)); });
    EXPECT_EQ(outcome(), (QStringList{u"Alone list com.example.bot"_s, u"Alone row x"_s}));
}

TEST_F(Dragging, ADragThatEndsElsewhereLeavesNothingBehind) {
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(board.drag(libraryRow(0), [&](ScriptedDrag& drag) {
            drag.over(freeSpace());
            drag.leave();
            EXPECT_FALSE(hovered(u"first"_s));
        }));
        EXPECT_FALSE(board.session().active());
    }
    EXPECT_EQ(board.told, (QStringList{u"began l0"_s, u"began l0"_s}));
}

TEST_F(Dragging, OutlivesItsRow) {
    EXPECT_TRUE(board.drag(board.row(u"first"_s, 0), [&](ScriptedDrag& drag) {
        drag.over(board.row(u"first"_s, 0));
        Board::fill(board.first, {u"b"_s, u"c"_s, u"d"_s});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(board.source(u"a"_s), nullptr);
        drag.over(board.row(u"first"_s, 1));
        EXPECT_TRUE(drag.drop(board.row(u"second"_s, 2)));
    }));
    EXPECT_EQ(outcome().last(), u"Second zone a"_s);
}

TEST_F(Dragging, OutlivesItsRowEvenBeforeThePicture) {
    board.session().setCarrier([](QDrag&) { return Qt::IgnoreAction; });
    QStringList ended;
    QObject::connect(&board.session(), &DragSession::finished, &board,
                     [&ended](const QString& payload) { ended.append(payload); });
    board.session().start(board.source(u"a"_s), u"a"_s, u"model"_s, 0, 0);
    Board::fill(board.first, {});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(QTest::qWaitFor([&ended] { return !ended.isEmpty(); }));
    EXPECT_EQ(ended, QStringList{u"a"_s});
}

TEST_F(Dragging, ListsMayChangeInFlight) {
    EXPECT_TRUE(board.drag(board.row(u"first"_s, 3), [&](ScriptedDrag& drag) {
        const QPoint at = board.row(u"first"_s, 1);
        for (const char* order : {"abcd", "dcba", "d", "", "edc", "xdyz", "abcd", "badc"}) {
            Board::fill(board.first,
                        QString::fromLatin1(order).split(QString(), Qt::SkipEmptyParts));
            drag.over(at);
        }
        Board::fill(board.first, {u"d"_s, u"e"_s});
        board.told.clear();
        EXPECT_TRUE(drag.drop(at));
    }));
    EXPECT_EQ(board.told, (QStringList{u"First row e"_s}));
}

TEST_F(Dragging, ThereIsNeverASecondDrag) {
    board.drag(libraryRow(0), [&](ScriptedDrag&) {
        board.session().start(board.source(u"a"_s), u"a"_s, u"model"_s, 0, 0);
        EXPECT_EQ(board.session().payload(), u"l0"_s);
        board.keys(board.source(u"a"_s), {Qt::Key_Space});
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
    board.session().start(board.source(u"a"_s), u"a"_s, u"model"_s, 0, 0);
    EXPECT_TRUE(board.session().active());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board.session().active(); }));
    EXPECT_EQ(carried, 0);
}

TEST_F(Dragging, TextOfOtherProgramsIsTaken) {
    QMimeData text;
    text.setText(u"some text\r\n"_s);
    for (const char* zone : {"first", "bots"}) {
        ScriptedDrag drag(board.window.windowHandle(), text);
        const QPoint at =
            QString::fromLatin1(zone) == u"first"_s ? freeSpace() : board.middle(u"bots"_s);
        EXPECT_TRUE(drag.over(at));
        EXPECT_TRUE(hovered(QString::fromLatin1(zone)));
        EXPECT_TRUE(drag.drop(at));
    }
    EXPECT_EQ(board.told, (QStringList{u"First zone some text"_s, u"Bots zone some text"_s}));
}

TEST_F(Dragging, OnlyOneLineBreakIsCutOff) {
    EXPECT_EQ(DragSession::textOf(u"a\n\n"_s), u"a\n"_s);
    EXPECT_EQ(DragSession::textOf(u" a b \n"_s), u" a b "_s);
    EXPECT_EQ(DragSession::textOf(u"a"_s), u"a"_s);
    EXPECT_EQ(DragSession::textOf(QString()), QString());
}

TEST_F(Dragging, FilesOfOtherProgramsAreNoText) {
    QMimeData files;
    files.setUrls({QUrl(u"file:///tmp/a"_s)});
    ScriptedDrag drag(board.window.windowHandle(), files);
    EXPECT_FALSE(drag.drop(freeSpace()));
    EXPECT_EQ(board.told, QStringList());
}

TEST(DraggingNearAnEdge, ScrollsAndTellsWhatComesUnderThePointer) {
    Board board({700, 250});
    QQuickItem* scroll = board.find(u"scroll"_s);
    const qreal bottom = scroll->property("contentHeight").toReal() - scroll->height();
    ASSERT_GT(bottom, 100);
    const QPoint nearBottom = scroll->mapToScene({60, scroll->height() - 4}).toPoint();
    const QPoint nearTop = scroll->mapToScene({60, 4}).toPoint();
    const auto scrolledTo = [scroll](qreal y) {
        return QTest::qWaitFor([=] { return scroll->property("contentY").toReal() == y; });
    };
    board.drag(board.row(u"library"_s, 0) - QPoint(0, 30), [&](ScriptedDrag& drag) {
        drag.over(nearBottom);
        EXPECT_TRUE(scrolledTo(bottom));
        // The second zone has come under the pointer, which has rested all the while.
        EXPECT_TRUE(board.find(u"second"_s)->property("hovered").toBool());
        EXPECT_FALSE(board.find(u"first"_s)->property("hovered").toBool());
        drag.over(nearTop);
        EXPECT_TRUE(scrolledTo(0));
    });
}

TEST(DraggingInAScrollingArea, UpAndDownDragsAndDoesNotScroll) {
    for (const int by : {16, -16, 120, -120}) {
        Board board({700, 250});
        QQuickItem* scroll = board.find(u"scroll"_s);
        board.drag(board.row(u"first"_s, 2), [](ScriptedDrag&) {}, {0, by});
        EXPECT_EQ(board.told, QStringList{u"began c"_s});
        EXPECT_EQ(scroll->property("contentY").toReal(), 0);
    }
}

TEST(DraggingNearAnEdge, ScrollsUnderWhatNobodyThereTakes) {
    Board board({700, 250});
    QQuickItem* scroll = board.find(u"scroll"_s);
    board.drag(board.middle(u"bot"_s), [&](ScriptedDrag& drag) {
        EXPECT_FALSE(drag.over(scroll->mapToScene({60, scroll->height() - 4}).toPoint()));
        EXPECT_TRUE(QTest::qWaitFor([=] { return scroll->property("contentY").toReal() > 40; }));
    });
}

// What drags do to a page near its edges.
struct NearEdges : ShownItem {
    using ShownItem::ShownItem;

    void carryTo(const QPoint& at) {
        QMimeData data;
        data.setText(QStringLiteral("text"));
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&widget, &enter);
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(widget.windowHandle(), &move);
    }
    [[nodiscard]] QQuickItem* item(const char* name) const {
        return root()->findChild<QQuickItem*>(QString::fromLatin1(name));
    }
};

TEST(EdgeScroll, GoesSidewaysToo) {
    NearEdges shown(R"(
Item {
    Flickable {
        objectName: "wide"
        anchors.fill: parent
        contentWidth: 2000; contentHeight: 2000
        DropZone { width: 2000; height: 2000; kinds: ["model"] }
    }
})");
    const QQuickItem* wide = shown.item("wide");
    shown.carryTo({475, 180});
    EXPECT_TRUE(QTest::qWaitFor([&] { return wide->property("contentX").toReal() > 50; }));
    EXPECT_EQ(wide->property("contentY").toReal(), 0);
    shown.carryTo({5, 355});
    EXPECT_TRUE(QTest::qWaitFor([&] { return wide->property("contentX").toReal() == 0; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return wide->property("contentY").toReal() > 50; }));
}

TEST(EdgeScroll, LeavesAListAtItsEndWhereItIs) {
    NearEdges shown(R"(
Item {
    ListView {
        objectName: "list"
        width: 200; height: 200
        topMargin: 2; bottomMargin: 4
        model: 3
        delegate: Item { width: 200; height: 30 }
    }
    DropZone { width: 200; height: 200; kinds: ["model"] }
})");
    const QQuickItem* list = shown.item("list");
    const qreal before = list->property("contentY").toReal();
    for (const QPoint at : {QPoint(100, 3), QPoint(100, 100), QPoint(100, 196)}) {
        shown.carryTo(at);
        QTest::qWait(60);
        EXPECT_EQ(list->property("contentY").toReal(), before);
    }
}

} // namespace
} // namespace varnhold::testing
