#include <QDrag>
#include <QMimeData>

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
