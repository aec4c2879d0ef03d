#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPainter>

#include "fleets.h"
#include "views/application_icon.h"
#include "views/colours.h"
#include "views/notice_view.h"
#include "views/status_menu.h"
#include "views/status_strip.h"
#include "views/tray_icon.h"

// Pictures of the views against those that somebody has looked at and found good. They are painted
// at the scale of the process (QT_SCALE_FACTOR), and compared with room for the small differences
// that libraries make. With VARNHOLD_REFRESH_PICTURES set, what is painted becomes the reference.
namespace varnhold::testing {
namespace {

constexpr int visibleDifference = 24;     // of a channel, of 255
constexpr double differentPixels = 0.005; // share of them that is let pass

QString fileName(const QString& name) {
    return QStringLiteral("%1@%2x.png").arg(name).arg(qApp->devicePixelRatio());
}

bool differs(const QColor& one, const QColor& other) {
    const auto far = [](int a, int b) { return std::abs(a - b) > visibleDifference; };
    return far(one.red(), other.red()) || far(one.green(), other.green()) ||
           far(one.blue(), other.blue()) || far(one.alpha(), other.alpha());
}

double shareOfDifferences(const QImage& one, const QImage& other) {
    int different = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            different += differs(one.pixelColor(x, y), other.pixelColor(x, y)) ? 1 : 0;
        }
    }
    return double(different) / (one.width() * one.height());
}

void expectPicture(const QString& name, const QPixmap& pixmap) {
    QImage picture = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    picture.setDevicePixelRatio(1);
    const QString reference =
        QDir(QStringLiteral(VIEWS_TESTS "/reference")).filePath(fileName(name));
    if (qEnvironmentVariableIsSet("VARNHOLD_REFRESH_PICTURES")) {
        ASSERT_TRUE(picture.save(reference));
        return;
    }
    const QImage wanted(reference);
    const QString painted = QDir(QStringLiteral(VIEWS_OUTPUT)).filePath(fileName(name));
    QDir().mkpath(QStringLiteral(VIEWS_OUTPUT));
    picture.save(painted); // to look at, should they differ
    ASSERT_EQ(picture.size(), wanted.size()) << painted.toStdString();
    EXPECT_LE(shareOfDifferences(picture, wanted), differentPixels) << painted.toStdString();
}

class Pictures : public ::testing::TestWithParam<bool> {
protected:
    void SetUp() override { QApplication::setPalette(GetParam() ? darkPalette() : lightPalette()); }
    void TearDown() override { QApplication::setPalette(lightPalette()); }

    static void expect(const char* name, const QPixmap& pixmap) {
        expectPicture(
            QString::fromLatin1(name) + (GetParam() ? QStringLiteral("-dark") : QString()), pixmap);
    }
    static QPixmap strip(int bots, const char* title) {
        MenuOpener opener([](MenuAction, const std::string&) {});
        StatusStrip strip(opener, [] {});
        strip.setImage(barsOf(bots));
        strip.setTitle(QString::fromUtf8(title), QStringLiteral("Varnhold"));
        strip.resize(strip.sizeHint());
        return strip.grab();
    }
};

TEST_P(Pictures, StripOfAnEmptyFleet) {
    expect("strip-0", strip(0, " 0/0"));
}

TEST_P(Pictures, StripOfOneBot) {
    expect("strip-1", strip(1, " 1/1"));
}

TEST_P(Pictures, StripOfFiveBots) {
    expect("strip-5", strip(5, " 5/5"));
}

TEST_P(Pictures, StripOfFiveBotsWithOneCrashed) {
    expect("strip-5-crashed", strip(5, " 3/5 🔴1"));
}

TEST_P(Pictures, StripOfTwentyBots) {
    expect("strip-20", strip(20, " 20/20"));
}

TEST_P(Pictures, StripOfSixtyBots) {
    expect("strip-60", strip(60, " 48/60 🔴12"));
}

TEST_P(Pictures, MenuWithARowUnderThePointer) {
    StatusMenu menu(menuRows(), [](MenuAction, const std::string&) {});
    menu.resize(menu.sizeHint());
    menu.setActiveAction(menu.actions().at(9));
    expect("menu", menu.grab());
}

TEST_P(Pictures, PopoverWithAWarning) {
    NoticeView view(noticePanel({{"Claude Opus 5 was installed by Planner and is now third in the "
                                  "Architect chain.",
                                  true},
                                 {"Qwen 3 Coder was installed.", false}}),
                    defaultApplicationIcon().pixmap(64));
    expect("popover", view.grab());
}

TEST_P(Pictures, TrayIconsOfAllSizes) {
    const int side = 64;
    QPixmap sheet(QSize(6 * side, 4 * side) * qApp->devicePixelRatio());
    sheet.setDevicePixelRatio(qApp->devicePixelRatio());
    sheet.fill(QApplication::palette().color(QPalette::Window));
    QPainter painter(&sheet);
    int row = 0;
    for (const int bots : {1, 5, 20, 60}) {
        int column = 0;
        for (const int size : {16, 22, 24, 32, 48, 64}) {
            trayIcon(barsOf(bots)).paint(&painter, QRect(column++ * side, row * side, size, size));
        }
        ++row;
    }
    painter.end();
    expect("tray", sheet);
}

INSTANTIATE_TEST_SUITE_P(All, Pictures, ::testing::Bool(),
                         [](const auto& which) { return which.param ? "Dark" : "Light"; });

} // namespace
} // namespace varnhold::testing
