#include <gtest/gtest.h>

#include <QSignalSpy>

#include "fleets.h"
#include "views/status/notifier_item.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

struct ShownItem {
    NotifierItem item{QStringLiteral("/Menu"), [] { return true; }};
    QSignalSpy icons{&item, &NotifierItem::NewIcon};

    void lift(double level) {
        BarImage image = barsOf(3);
        image.bars[0].height = level * image.height;
        item.setImage(image);
    }
};

QColor pixelOf(const NotifierPixmap& pixmap, int x, int y) {
    const auto at = (static_cast<qsizetype>(y) * pixmap.width + x) * 4;
    const auto byte = [&](qsizetype i) { return static_cast<uchar>(pixmap.pixels.at(at + i)); };
    return {byte(1), byte(2), byte(3), byte(0)};
}

// Red pixels of the lower right corner, where the mark stands.
int redOf(const NotifierPixmap& pixmap) {
    int count = 0;
    for (int y = pixmap.height * 2 / 3; y < pixmap.height; ++y) {
        for (int x = pixmap.width * 2 / 3; x < pixmap.width; ++x) {
            const QColor seen = pixelOf(pixmap, x, y);
            count += seen.alpha() > 200 && seen.red() > 200 && seen.green() < 80 && seen.blue() < 80
                         ? 1
                         : 0;
        }
    }
    return count;
}

TEST(NotifierItem, HandsATokenOnForOneChoiceAlone) {
    ShownItem shown;
    EXPECT_EQ(shown.item.takeToken(), "");
    shown.item.ProvideXdgActivationToken(QStringLiteral("first"));
    shown.item.ProvideXdgActivationToken(QStringLiteral("second"));
    EXPECT_EQ(shown.item.takeToken(), "second");
    EXPECT_EQ(shown.item.takeToken(), "");
}

TEST(NotifierItem, OffersThePicturesThatPanelsTakeTheirPickOf) {
    ShownItem shown;
    shown.lift(0);
    QList<int> sides;
    for (const NotifierPixmap& pixmap : shown.item.pixmaps()) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.pixels.size(), pixmap.width * pixmap.height * 4);
        sides.append(pixmap.width);
    }
    EXPECT_EQ(sides, (QList<int>{16, 22, 24, 32, 48}));
}

TEST(NotifierItem, TellsOfTheFirstChangeAtOnceAndThenKeepsAPace) {
    ShownItem shown;
    shown.lift(0);
    EXPECT_EQ(shown.icons.count(), 1);
    for (int step = 1; step <= 10; ++step) {
        shown.lift(step / 10.0);
    }
    EXPECT_EQ(shown.icons.count(), 1);
    WAIT_UNTIL(shown.icons.count() == 2); // the last of them, in one
    const auto largest = shown.item.pixmaps().last();
    EXPECT_EQ(pixelOf(largest, 8, 1).alpha(), 255);
}

TEST(NotifierItem, SaysNothingOfPicturesThatLookTheSame) {
    ShownItem shown;
    shown.lift(0.5);
    shown.lift(0.5001);
    shown.lift(0.5);
    QTest::qWait(0);
    EXPECT_EQ(shown.icons.count(), 1);
}

TEST(NotifierItem, IsMarkedWhileSomethingHasCrashed) {
    ShownItem shown;
    QSignalSpy statuses(&shown.item, &NotifierItem::NewStatus);
    shown.lift(0);
    for (const NotifierPixmap& pixmap : shown.item.pixmaps()) {
        EXPECT_EQ(redOf(pixmap), 0) << pixmap.width;
    }
    EXPECT_EQ(shown.item.status(), QStringLiteral("Active"));
    shown.item.setAttention(true);
    for (const NotifierPixmap& pixmap : shown.item.pixmaps()) {
        EXPECT_GT(redOf(pixmap), 8) << pixmap.width;
    }
    EXPECT_EQ(shown.item.status(), QStringLiteral("NeedsAttention"));
    WAIT_UNTIL(shown.icons.count() == 2);
    shown.item.setAttention(false);
    EXPECT_EQ(statuses.count(), 2);
    WAIT_UNTIL(shown.icons.count() == 3);
}

TEST(NotifierItem, HasItsTextBesideItAndTheSameInFullForListeners) {
    ShownItem shown;
    QSignalSpy labels(&shown.item, &NotifierItem::XAyatanaNewLabel);
    shown.item.setText(QString::fromUtf8("4/6 🔴1"), QStringLiteral("Varnhold, in words"));
    shown.item.setText(QString::fromUtf8("4/6 🔴1"), QStringLiteral("Varnhold, in words"));
    EXPECT_EQ(labels.count(), 1);
    EXPECT_EQ(shown.item.label(), QString::fromUtf8("4/6 🔴1"));
    EXPECT_EQ(shown.item.spoken(), QStringLiteral("Varnhold, in words"));
    EXPECT_EQ(shown.item.toolTip().title, QString::fromUtf8("4/6 🔴1\nVarnhold, in words"));
}

} // namespace
} // namespace varnhold::testing
