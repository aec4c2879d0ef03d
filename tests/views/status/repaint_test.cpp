#include <QApplication>
#include <gtest/gtest.h>
#include <string>

#include "at_rest.h"
#include "fleets.h"
#include "support/fake_user_defaults.h"
#include "views/status/status_menu.h"
#include "views/status/status_strip.h"

// After each change what is on the screen is what painting everything anew gives, whatever the
// scale.
namespace varnhold::testing {
namespace {

void expectWhole(QWidget& widget, const std::string& change) {
    constexpr int stillFrames = 4;
    const QImage shown = seenAtRest(widget, stillFrames);
    widget.repaint();
    const QRect wrong = difference(shown, seenAtRest(widget, stillFrames));
    EXPECT_TRUE(wrong.isEmpty()) << change << ", within " << wrong.width() << "x" << wrong.height()
                                 << "+" << wrong.x() << "+" << wrong.y();
}

// The platform without a display doesn't clear what is painted over and over.
void makeOpaque(QWidget& widget) {
    widget.setAttribute(Qt::WA_TranslucentBackground, false);
    widget.setAttribute(Qt::WA_NoSystemBackground, false);
}

BarImage lifted(int bots, int step) {
    BarImage image = barsOf(bots);
    int number = step;
    for (BarRectangle& bar : image.bars) {
        bar.height = 2 + number++ * 5 % 14 + 0.3 * step;
        bar.y = (image.height - bar.height) / 2;
    }
    return image;
}

TEST(RepaintPictures, BarsOfTheStripRiseAndSink) {
    MenuOpener opener{[](MenuAction, const std::string&) {}};
    FakeUserDefaults defaults;
    StatusStrip strip{opener, defaults, [] {}};
    strip.setImage(lifted(7, 0));
    strip.setTitle(QStringLiteral(" 3/5 🔴1"), QStringLiteral("Varnhold"));
    makeOpaque(strip);
    strip.place();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&strip));
    for (int step = 1; step < 12; ++step) {
        strip.setImage(lifted(7, step));
        expectWhole(strip, "step " + std::to_string(step));
    }
    strip.setTitle(QStringLiteral(" 4/5"), QStringLiteral("Varnhold"));
    expectWhole(strip, "another text");
    QApplication::setActiveWindow(&strip);
    strip.setFocus();
    expectWhole(strip, "the focus comes");
}

TEST(RepaintPictures, RowsOfTheMenuAreMarkedOneByOne) {
    auto* menu = new StatusMenu(menuRows(), [](MenuAction, const std::string&) {});
    makeOpaque(*menu);
    menu->popupBeside({300, 20, 80, 24}, {0, 0, 780, 580});
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    for (std::size_t row = 0; row < menuRows().size(); ++row) {
        QTest::keyClick(menu, Qt::Key_Down);
        expectWhole(*menu, "row " + std::to_string(row));
    }
    for (int y = 4; y < menu->height(); y += 25) {
        QTest::mouseMove(menu, {20, y});
        expectWhole(*menu, "the pointer at " + std::to_string(y));
    }
    menu->close();
}

} // namespace
} // namespace varnhold::testing
