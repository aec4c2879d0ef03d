#include <gtest/gtest.h>
#include <string>

#include <QApplication>
#include <QPainter>

#include "fleets.h"
#include "pictures.h"
#include "support/fake_user_defaults.h"
#include "views/colors/colors.h"
#include "views/desktop/application_icon.h"
#include "views/status/model_notice_view.h"
#include "views/status/status_menu.h"
#include "views/status/status_strip.h"
#include "views/status/tray_icon.h"

// Pictures of the views against those that somebody has looked at and found good.
namespace varnhold::testing {
namespace {

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
        FakeUserDefaults defaults;
        StatusStrip strip(opener, defaults, [] {});
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
    ModelNoticeView view(
        noticePanel({{"Claude Opus 5 was installed by Planner and is now third in the "
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
            const qreal scale = qApp->devicePixelRatio();
            QImage icon = trayImage(barsOf(bots), qRound(size * scale), size == 64);
            icon.setDevicePixelRatio(scale);
            painter.drawImage(column++ * side, row * side, icon);
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
