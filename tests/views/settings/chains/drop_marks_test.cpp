#include <QDrag>
#include <QMimeData>
#include <vector>

#include "shown_chains.h"

namespace varnhold::testing {
namespace {

using ::testing::SizeIs;

// What is seen of a drag and of its drop.
struct DropMarks : ShownChains {
    const QString codingModels = QStringLiteral("End of Coding Chain");
    const QString photoModels = QStringLiteral("End of Photo Chain");

    DropMarks() {
        view->workerModels = {testing::model("a", "A"), testing::model("b", "B")};
        view->photoModels = {testing::model("b", "B2"), testing::model("c", "C")};
    }
    [[nodiscard]] QPoint freeSpace(const QString& zone) const {
        const QQuickItem* area = named(zone);
        return area->mapToScene(QPointF(area->width() / 2, area->height() - 6)).toPoint();
    }
};

// The first of that name that is seen; null if none is.
const QQuickItem* visible(const QQuickItem* under, const QString& name) {
    if (!under->isVisible() || under->objectName() == name) {
        return under->isVisible() ? under : nullptr;
    }
    for (const QQuickItem* child : under->childItems()) {
        if (const QQuickItem* found = visible(child, name)) {
            return found;
        }
    }
    return nullptr;
}

TEST(DropMarks, KnowWhatAChainWouldTake) {
    DropMarks settings;
    settings.view->directModels = {testing::model("b"), testing::model("x")};
    settings.show();
    const ChainPart& worker = settings.chain(TargetList::worker);
    EXPECT_FALSE(worker.takesModel(QStringLiteral("b"))) << "by its id";
    EXPECT_TRUE(worker.takesModel(QStringLiteral("B"))) << "its own row ends its move";
    EXPECT_TRUE(worker.takesModel(QStringLiteral("C"))) << "a neighbour's";
    EXPECT_TRUE(worker.takesModel(QStringLiteral("x"))) << "the library's";
    EXPECT_FALSE(worker.takesModel(QStringLiteral("nothing")));
}

TEST(DropMarks, KnowWhichBotsWouldBeTaken) {
    DropMarks settings;
    settings.view->userBots = {bot("ops"), bot("cto")};
    settings.view->chainBotAssignments["worker"] = {bot("ops").launchdLabel};
    settings.show();
    const ChainPart& worker = settings.chain(TargetList::worker);
    EXPECT_FALSE(worker.takesBot(toQString(bot("ops").launchdLabel)));
    EXPECT_TRUE(worker.takesBot(toQString(bot("cto").launchdLabel)));
    EXPECT_FALSE(worker.takesBot(QStringLiteral("nobody")));
    EXPECT_TRUE(settings.chain(TargetList::photo).takesBot(toQString(bot("ops").launchdLabel)));
}

TEST(DropMarks, KnowWhatTheLibraryTakesOutOfAChain) {
    DropMarks settings;
    settings.view->directModels = {testing::model("x")};
    settings.show();
    const LibraryPart& library = *settings.model->library();
    EXPECT_TRUE(library.takes(QStringLiteral("B2")));
    EXPECT_FALSE(library.takes(QStringLiteral("x")));
}

// What the platform is answered as the pointer goes from place to place.
TEST(DropMarks, ThePointerSaysWhereADropComesToNothing) {
    DropMarks settings;
    settings.show();
    const QPoint rowOfAnother = middleOf(settings.named(QStringLiteral("Model c")));
    const QPoint bots = middleOf(settings.named(QStringLiteral("Bots of Photo Chain")));
    std::vector<Qt::DropAction> answers;
    settings.drag(QStringLiteral("Model a"), coding, [&](const QDrag& drag) {
        const QString dragged = drag.mimeData()->text();
        for (const QPoint& at : {settings.freeSpace(settings.photoModels), rowOfAnother, bots,
                                 settings.freeSpace(settings.codingModels)}) {
            settings.carryTo(at, dragged); // comes there
            answers.push_back(settings.carryTo(at + QPoint(1, 0), dragged));
        }
        EXPECT_FALSE(drag.dragCursor(Qt::IgnoreAction).isNull());
        settings.leave();
    });
    EXPECT_THAT(answers, ::testing::ElementsAre(Qt::MoveAction, Qt::CopyAction, Qt::CopyAction,
                                                Qt::MoveAction));
}

TEST(DropMarks, ALineShowsWhereTheRowWouldCome) {
    DropMarks settings;
    settings.show();
    const auto line = [&] {
        const QQuickItem* shown = visible(settings.page->rootObject(), QStringLiteral("landing"));
        return shown == nullptr ? QRectF()
                                : shown->mapRectToScene({0, 0, shown->width(), shown->height()});
    };
    const auto placeOf = [&](const char* name) {
        const QQuickItem* row = settings.named(QString::fromUtf8(name), coding);
        return row->mapRectToScene({0, 0, row->width(), row->height()});
    };
    const QRectF last = placeOf("Model b");
    EXPECT_TRUE(line().isEmpty());
    settings.carryTo(settings.freeSpace(settings.codingModels), QStringLiteral("C"));
    EXPECT_EQ(line().left(), last.left());
    EXPECT_EQ(line().width(), last.width());
    EXPECT_EQ(line().top(), last.bottom() + 1) << "under the last row";
    settings.carryTo(middleOf(settings.named(QStringLiteral("Top of Coding Chain"))),
                     QStringLiteral("C"));
    EXPECT_EQ(line().bottom(), placeOf("Model a").top() - 1) << "over the first row";
    settings.carryTo(middleOf(settings.named(QStringLiteral("Model c"))), QStringLiteral("C"));
    EXPECT_TRUE(line().isEmpty()) << "rows take each other's places, and no others'";
    settings.leave();
    EXPECT_TRUE(line().isEmpty());
}

TEST(DropMarks, ARowThatIsDroppedGlidesToItsPlace) {
    DropMarks settings;
    settings.show();
    settings.settle();
    settings.named(QStringLiteral("Models of Coding Chain"))->setProperty("springs", true);
    const auto place = [&] {
        const QQuickItem* row = settings.named(QStringLiteral("Model c"), coding);
        return row == nullptr ? -1 : row->y();
    };
    settings.carryTo(settings.freeSpace(settings.codingModels), QStringLiteral("C"));
    QMimeData data;
    data.setText(QStringLiteral("C"));
    QDropEvent drop(settings.freeSpace(settings.codingModels), Qt::MoveAction, &data,
                    Qt::LeftButton, {});
    QCoreApplication::sendEvent(settings.page, &drop);
    settings.platform.settle();
    const qreal home = 2 * (34 + 4);
    EXPECT_GT(place(), home) << "it begins where it was let go";
    EXPECT_TRUE(QTest::qWaitFor([&] { return place() == home; }));
    EXPECT_THAT(settings.view->workerModels, SizeIs(3));
}

} // namespace
} // namespace varnhold::testing
