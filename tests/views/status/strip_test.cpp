#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QAccessible>
#include <QApplication>
#include <QScreen>
#include <QWindow>

#include "fleets.h"
#include "support/fake_user_defaults.h"
#include "views/colors/colors.h"
#include "views/status/status_strip.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

struct ShownStrip {
    std::vector<std::string> chosen;
    int removals = 0;
    MenuOpener opener{[this](MenuAction, const std::string& value) { chosen.push_back(value); }};
    FakeUserDefaults defaults;
    StatusStrip strip{opener, defaults, [this] { ++removals; }};

    ShownStrip() {
        opener.setRows(menuRows());
        strip.setImage(barsOf(5));
        strip.setTitle(QStringLiteral(" 3/5 🔴1"),
                       QStringLiteral("Varnhold, 3 of 5 bots running, 1 crashed"));
        strip.place();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&strip));
    }
    [[nodiscard]] QWidget* menu() const { return QApplication::activePopupWidget(); }
};

QRect screenArea() {
    return QGuiApplication::primaryScreen()->availableGeometry();
}

TEST(Strip, StandsAtTheBottomRight) {
    const ShownStrip shown;
    EXPECT_EQ(shown.strip.y() + shown.strip.height(), screenArea().y() + screenArea().height() - 8);
    EXPECT_EQ(shown.strip.x() + shown.strip.width(), screenArea().x() + screenArea().width() - 8);
    EXPECT_TRUE(shown.strip.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST(Strip, KeepsItsDistanceFromTheRightWhenItsTextGrows) {
    ShownStrip shown;
    const int right = shown.strip.x() + shown.strip.width();
    const int narrow = shown.strip.width();
    shown.strip.setTitle(QStringLiteral(" 13/25 🔴11"), QStringLiteral("Varnhold"));
    EXPECT_GT(shown.strip.width(), narrow);
    EXPECT_EQ(shown.strip.x() + shown.strip.width(), right);
}

TEST(Strip, IsAButtonWithAMenuToThoseWhoListen) {
    ShownStrip shown;
    QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&shown.strip);
    ASSERT_NE(heard, nullptr);
    EXPECT_EQ(heard->text(QAccessible::Name),
              QStringLiteral("Varnhold, 3 of 5 bots running, 1 crashed"));
    EXPECT_EQ(heard->role(), QAccessible::ButtonMenu);
    ASSERT_NE(heard->actionInterface(), nullptr);
    heard->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    WAIT_UNTIL(shown.menu() != nullptr);
    shown.menu()->close();
}

TEST(Strip, DropsItsMenuAtTheKeysOfAButtonWithAMenu) {
    for (const Qt::Key key :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Down, Qt::Key_Menu, Qt::Key_F10}) {
        ShownStrip shown;
        EXPECT_NE(shown.strip.focusPolicy() & Qt::TabFocus, 0);
        QTest::keyClick(&shown.strip, key);
        ASSERT_NE(shown.menu(), nullptr) << key;
        QTest::keyClick(shown.menu(), Qt::Key_Escape);
        WAIT_UNTIL(!shown.opener.isOpen());
    }
}

TEST(Strip, DropsItsMenuAtAClickOfEitherButton) {
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        ShownStrip shown;
        QTest::mouseClick(&shown.strip, button);
        ASSERT_NE(shown.menu(), nullptr);
        EXPECT_LE(shown.menu()->y() + shown.menu()->height(), shown.strip.y());
        EXPECT_LE(shown.menu()->x() + shown.menu()->width(),
                  screenArea().x() + screenArea().width());
        shown.menu()->close();
        WAIT_UNTIL(!shown.opener.isOpen());
    }
}

TEST(Strip, IsNotReopenedByThePressThatHasClosedItsMenu) {
    ShownStrip shown;
    QTest::mouseClick(&shown.strip, Qt::LeftButton);
    ASSERT_NE(shown.menu(), nullptr);
    QTest::mousePress(shown.menu(), Qt::LeftButton, {},
                      {20, 2000}); // on the strip, beside the menu
    WAIT_UNTIL(!shown.opener.isOpen());
    QTest::mouseClick(&shown.strip, Qt::LeftButton); // which hears of the same press
    EXPECT_FALSE(shown.opener.isOpen());
    // A menu that was left by Escape opens again at once.
    QTest::keyClick(&shown.strip, Qt::Key_Space);
    ASSERT_NE(shown.menu(), nullptr);
    shown.menu()->close();
    WAIT_UNTIL(!shown.opener.isOpen());
}

TEST(Strip, FollowsThePointerWhereNoWindowManagerMovesIt) {
    ShownStrip shown;
    const QPoint before = shown.strip.pos();
    QTest::mousePress(&shown.strip, Qt::LeftButton, {}, {20, 10});
    QTest::mouseMove(&shown.strip, {-80, -90});
    QTest::mouseRelease(&shown.strip, Qt::LeftButton, {}, {20, 10});
    EXPECT_EQ(shown.strip.pos(), before + QPoint(-100, -100));
    EXPECT_FALSE(shown.opener.isOpen()) << "a move isn't a click";
}

TEST(Strip, IsFoundAgainWhereItWasPut) {
    ShownStrip shown;
    QTest::mousePress(&shown.strip, Qt::LeftButton, {}, {20, 10});
    QTest::mouseMove(&shown.strip, {-80, -90});
    QTest::mouseRelease(&shown.strip, Qt::LeftButton, {}, {20, 10});
    const int right = shown.strip.x() + shown.strip.width();
    StatusStrip next(shown.opener, shown.defaults, [] {});
    next.setImage(barsOf(12));
    next.setTitle(QStringLiteral(" 12/12"), QStringLiteral("Varnhold"));
    next.place();
    EXPECT_EQ(next.x() + next.width(), right);
    EXPECT_EQ(next.y(), shown.strip.y());
    // What can't be understood, or lies beside every screen, is no place.
    const std::string key = shown.defaults.strings.begin()->first;
    for (const char* nonsense : {"", "x y", "1", "100000 100000", "-9 -9"}) {
        shown.defaults.strings[key] = nonsense;
        StatusStrip another(shown.opener, shown.defaults, [] {});
        another.place();
        EXPECT_TRUE(screenArea().contains(another.geometry())) << nonsense;
    }
}

TEST(Strip, ThatIsDraggedOffTheScreenComesBack) {
    ShownStrip shown;
    QTest::mousePress(&shown.strip, Qt::LeftButton, {}, {20, 10});
    QTest::mouseMove(&shown.strip, {5000, 5000});
    QTest::mouseRelease(&shown.strip, Qt::LeftButton, {}, {20, 10});
    EXPECT_TRUE(screenArea().contains(shown.strip.geometry()));
}

TEST(Strip, PaintsItselfAnewWhenTheColoursChange) {
    ShownStrip shown;
    const QColor light = shown.strip.grab().toImage().pixelColor(shown.strip.width() / 2, 3);
    QApplication::setPalette(darkPalette());
    QCoreApplication::processEvents();
    const QColor dark = shown.strip.grab().toImage().pixelColor(shown.strip.width() / 2, 3);
    QApplication::setPalette(lightPalette());
    EXPECT_EQ(light, lightPalette().color(QPalette::Window));
    EXPECT_EQ(dark, darkPalette().color(QPalette::Window));
}

TEST(Strip, TakesTheRoomThatAnotherFontNeeds) {
    ShownStrip shown;
    shown.strip.setTitle(QStringLiteral(" 12/34"), QStringLiteral("Varnhold"));
    const QFont usual = QApplication::font();
    const int before = shown.strip.width();
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.strip.font().family(), QStringLiteral("DejaVu Sans Mono"));
    EXPECT_GT(shown.strip.width(), before);
    EXPECT_EQ(shown.strip.width(), shown.strip.sizeHint().width());
    QApplication::setFont(usual);
    QCoreApplication::processEvents();
    EXPECT_EQ(shown.strip.width(), before);
}

TEST(Strip, ThatIsClosedCountsAsRemoved) {
    ShownStrip shown;
    shown.strip.close();
    EXPECT_EQ(shown.removals, 1);
}

TEST(Strip, ThatTheSessionsEndClosesCountsAsRemoved) {
    ShownStrip shown;
    QEvent quit(QEvent::Quit); // as the session manager's last word arrives
    QCoreApplication::sendEvent(qApp, &quit);
    EXPECT_EQ(shown.removals, 1);
}

} // namespace
} // namespace varnhold::testing
