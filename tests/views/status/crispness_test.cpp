#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <cmath>
#include <vector>

#include "fleets.h"
#include "status/tray_bars.h"
#include "views/status/bar_painter.h"
#include "views/status/tray_icon.h"

namespace varnhold::testing {
namespace {

// A channel may be off by this much from rounding alone.
constexpr int rounding = 2;

bool isAlmost(const QColor& one, const QColor& other) {
    return std::abs(one.red() - other.red()) <= rounding &&
           std::abs(one.green() - other.green()) <= rounding &&
           std::abs(one.blue() - other.blue()) <= rounding &&
           std::abs(one.alpha() - other.alpha()) <= rounding;
}

BarImage risen(int bots) {
    BarImage image = barsOf(bots);
    for (BarRectangle& bar : image.bars) {
        bar.y = 0;
        bar.height = image.height;
    }
    return image;
}

QImage painted(const BarImage& image, qreal scale, const QPointF& origin) {
    QImage canvas(static_cast<int>(std::ceil((image.width + 20) * scale)),
                  static_cast<int>(std::ceil((image.height + 12) * scale)),
                  QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(scale);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    paintBars(painter, image, origin);
    return canvas;
}

class Crispness : public ::testing::TestWithParam<double> {};

TEST_P(Crispness, EveryColumnIsAllBarOrAllGap) {
    const qreal scale = GetParam();
    const BarImage image = risen(20);
    const QImage canvas = painted(image, scale, {10, 6});
    const int middle = canvas.height() / 2;
    std::vector<int> widths(image.bars.size());
    for (int x = 0; x < canvas.width(); ++x) {
        const QColor seen = canvas.pixelColor(x, middle);
        if (seen.alpha() <= rounding) {
            continue;
        }
        const auto bar =
            static_cast<std::size_t>(std::lround((x + 0.5 - 10 * scale) / (3 * scale) - 1.0 / 3));
        ASSERT_LT(bar, image.bars.size());
        EXPECT_TRUE(isAlmost(seen, barColor(image.bars[bar].hue)))
            << "column " << x << " is blurred: " << seen.name(QColor::HexArgb).toStdString();
        ++widths[bar];
    }
    for (const int width : widths) {
        EXPECT_EQ(width, std::lround(2 * scale));
    }
}

TEST_P(Crispness, ARisenBarReachesFromEdgeToEdge) {
    const qreal scale = GetParam();
    const QImage canvas = painted(risen(1), scale, {10, 6});
    int colored = 0;
    const int column = static_cast<int>(std::lround(10 * scale));
    for (int y = 0; y < canvas.height(); ++y) {
        colored += canvas.pixelColor(column, y).alpha() > 0 ? 1 : 0;
    }
    EXPECT_EQ(colored, std::lround(16 * scale));
}

TEST_P(Crispness, AFlatBarIsSeen) {
    const qreal scale = GetParam();
    const QImage canvas = painted(barsOf(3, false), scale, {10, 6});
    for (const BarRectangle& bar : barsOf(3, false).bars) {
        int strongest = 0;
        for (int y = 0; y < canvas.height(); ++y) {
            const int x = static_cast<int>(std::round((10 + bar.x) * scale));
            strongest = std::max(strongest, canvas.pixelColor(x, y).alpha());
        }
        EXPECT_GT(strongest, 150);
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, Crispness, ::testing::Values(1.0, 1.25, 1.5, 2.0, 3.0));

class TrayCrispness : public ::testing::TestWithParam<int> {};

TEST_P(TrayCrispness, EveryColumnIsAllBarOrAllGap) {
    const int side = GetParam();
    for (const int bots : {0, 1, 5, 20, 60}) {
        const BarImage image = barsOf(bots);
        const QImage icon = trayImage(image, side);
        ASSERT_EQ(icon.size(), QSize(side, side));
        std::vector<int> expected(static_cast<std::size_t>(side), -1);
        const auto bars = trayBars(image, side);
        for (std::size_t i = 0; i < bars.size(); ++i) {
            for (int x = bars[i].x; x < bars[i].x + bars[i].width; ++x) {
                expected[static_cast<std::size_t>(x)] = static_cast<int>(i);
            }
        }
        for (int x = 0; x < side; ++x) {
            const int bar = expected[static_cast<std::size_t>(x)];
            const QColor seen = icon.pixelColor(x, side / 2);
            if (bar < 0) {
                EXPECT_EQ(seen.alpha(), 0) << "column " << x << " of " << side;
            } else if (bars[static_cast<std::size_t>(bar)].height > side / 2) {
                EXPECT_TRUE(isAlmost(seen, barColor(bars[static_cast<std::size_t>(bar)].hue)))
                    << "column " << x << " of " << side;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Sides, TrayCrispness, ::testing::Values(16, 22, 24, 32, 48, 64));

} // namespace
} // namespace varnhold::testing
