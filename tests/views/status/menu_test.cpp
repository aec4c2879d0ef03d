#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QHelpEvent>
#include <QScreen>
#include <QToolTip>
#include <QWheelEvent>

#include "fleets.h"
#include "status/fleet_picture.h"
#include "support/records.h"
#include "views/status/menu_opener.h"
#include "views/status/status_menu.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Choice = std::pair<MenuAction, std::string>;

struct OpenMenu {
    std::vector<Choice> choices;
    MenuOpener opener{[this](MenuAction action, const std::string& value) {
        choices.emplace_back(action, value);
    }};

    explicit OpenMenu(const std::vector<MenuRow>& rows = menuRows()) {
        opener.setRows(rows);
        open();
    }
    QMenu* open() {
        opener.open({600, 10, 80, 28}, nullptr);
        return menu();
    }
    [[nodiscard]] static QMenu* menu() {
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
};

QStringList titlesOf(const QMenu& menu) {
    QStringList titles;
    for (const QAction* action : menu.actions()) {
        titles.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return titles;
}

TEST(Menu, ShowsEveryRowInOrderWithItsKeyBesideIt) {
    OpenMenu open;
    const QStringList titles = titlesOf(*OpenMenu::menu());
    EXPECT_EQ(titles.size(), static_cast<qsizetype>(menuRows().size()));
    EXPECT_EQ(titles.first(), QString::fromUtf8("⚙️ Preferences...\tCtrl+,"));
    EXPECT_EQ(titles.last(), QStringLiteral("Quit\tCtrl+Q"));
    EXPECT_TRUE(titles.contains(QString::fromUtf8("🟢 🔬 Research && Review (Idle)")));
}

TEST(Menu, IsWalkedAndChosenFromByKeyboard) {
    OpenMenu open;
    for (int step = 0; step < 5; ++step) { // preferences, alert, start, restart, first bot
        QTest::keyClick(OpenMenu::menu(), Qt::Key_Down);
    }
    QTest::keyClick(OpenMenu::menu(), Qt::Key_Return);
    WAIT_UNTIL(!open.choices.empty());
    EXPECT_THAT(open.choices,
                ElementsAre(Choice(MenuAction::toggleDaemon, "com.ostrelleai.planner.telegramd")));
    WAIT_UNTIL(!open.opener.isOpen());
}

TEST(Menu, AnswersToItsKeysWhileItIsOpen) {
    OpenMenu open;
    QTest::keyClick(OpenMenu::menu(), Qt::Key_R, Qt::ControlModifier);
    WAIT_UNTIL(!open.choices.empty());
    EXPECT_THAT(open.choices, ElementsAre(Choice(MenuAction::restartAllAgents, "")));
    WAIT_UNTIL(!open.opener.isOpen());
}

TEST(Menu, OfEscapeChoosesNothing) {
    OpenMenu open;
    QTest::keyClick(OpenMenu::menu(), Qt::Key_Down);
    QTest::keyClick(OpenMenu::menu(), Qt::Key_Escape);
    WAIT_UNTIL(!open.opener.isOpen());
    EXPECT_THAT(open.choices, IsEmpty());
}

TEST(Menu, ThatIsOpenStaysAsItIsThroughAPollAndItsSuccessorComesNext) {
    OpenMenu open;
    const QMenu* before = OpenMenu::menu();
    const QStringList titles = titlesOf(*before);
    open.opener.setRows(statusMenuRows({}));
    EXPECT_EQ(OpenMenu::menu(), before);
    EXPECT_EQ(titlesOf(*before), titles);

    QTest::keyClick(OpenMenu::menu(), Qt::Key_Down);
    QTest::keyClick(OpenMenu::menu(), Qt::Key_Down);
    QTest::keyClick(OpenMenu::menu(), Qt::Key_Return);
    WAIT_UNTIL(!open.choices.empty());
    EXPECT_THAT(open.choices, ElementsAre(Choice(MenuAction::reloginProvider, "gemini")));
    WAIT_UNTIL(!open.opener.isOpen());

    const QMenu* after = open.open();
    ASSERT_NE(after, nullptr);
    EXPECT_EQ(after->actions().size(), 7);
}

TEST(Menu, OpensOnceHoweverOftenItIsAskedTo) {
    OpenMenu open;
    const QMenu* before = OpenMenu::menu();
    open.open();
    EXPECT_EQ(OpenMenu::menu(), before);
}

TEST(Menu, ShowsAlertsInRedAndNothingElse) {
    OpenMenu open;
    const QImage picture = OpenMenu::menu()->grab().toImage();
    const auto hasRedText = [&](const QRect& row) {
        int red = 0;
        for (int x = row.left() + 40; x < row.right(); ++x) { // past the emoji
            for (int y = row.top(); y < row.bottom(); ++y) {
                const QColor seen = picture.pixelColor(x, y);
                red += seen.red() > 150 && seen.green() < 90 && seen.blue() < 90 ? 1 : 0;
            }
        }
        return red > 20;
    };
    for (const QAction* action : OpenMenu::menu()->actions()) {
        EXPECT_EQ(hasRedText(OpenMenu::menu()->actionGeometry(const_cast<QAction*>(action))),
                  action->text().contains(QStringLiteral("Re-login")))
            << action->text().toStdString();
    }
}

TEST(Menu, IsWideEnoughForItsLongestRow) {
    FleetPicture sources;
    sources.bots = {
        bot("long", {.title = "A bot with a long name & a longer story to tell about itself"})};
    sources.models = {{"long", "provider/a-model-with-a-very-long-name-indeed-2026-11-21"}};
    StatusMenu menu(statusMenuRows(sources), [](MenuAction, const std::string&) {});
    const QFontMetricsF metrics(menu.font());
    const QString longest = menu.actions().at(6)->text();
    EXPECT_GT(menu.sizeHint().width(), metrics.horizontalAdvance(longest));
}

// A fleet that no screen has room for; the screen of these tests is 800 points wide and as high.
std::vector<MenuRow> longRows() {
    FleetPicture sources;
    for (int i = 0; i < 200; ++i) {
        const std::string name = "bot" + std::to_string(i);
        sources.bots.push_back(
            {.icon = "🤖", .title = name, .token = "", .role = name, .launchdLabel = name});
    }
    sources.bots[3].title = "<b>" + std::string(300, 'w');
    return statusMenuRows(sources);
}

struct LongMenu : OpenMenu {
    LongMenu() : OpenMenu(longRows()) {}
    [[nodiscard]] static QRect screen() {
        return QGuiApplication::primaryScreen()->availableGeometry();
    }
    static QRect placeOf(int row) { return menu()->actionGeometry(menu()->actions().at(row)); }
    static int last() { return static_cast<int>(menu()->actions().size()) - 1; }
};

TEST(LongMenu, StaysOnItsScreenUnderTheStripAndIsNoWiderThanHalfOfIt) {
    LongMenu open;
    EXPECT_TRUE(LongMenu::screen().contains(LongMenu::menu()->geometry()));
    EXPECT_GE(LongMenu::menu()->y(), 38);
    EXPECT_LE(LongMenu::menu()->width(), LongMenu::screen().width() / 2);
    for (int row = 0; row <= LongMenu::last(); ++row) {
        EXPECT_LE(LongMenu::placeOf(row).right(), LongMenu::menu()->width()) << row;
    }
}

TEST(LongMenu, HasItsLastRowInReachOfTheKeyboard) {
    LongMenu open;
    EXPECT_FALSE(LongMenu::menu()->rect().contains(LongMenu::placeOf(LongMenu::last())));
    QTest::keyClick(LongMenu::menu(), Qt::Key_End);
    EXPECT_TRUE(LongMenu::menu()->rect().contains(LongMenu::placeOf(LongMenu::last())));
    QTest::keyClick(LongMenu::menu(), Qt::Key_Return);
    WAIT_UNTIL(!open.choices.empty());
    EXPECT_THAT(open.choices, ElementsAre(Choice(MenuAction::terminate, "")));
}

TEST(LongMenu, HasItsLastRowInReachOfTheWheel) {
    LongMenu open;
    QMenu* menu = LongMenu::menu();
    const QPointF middle = menu->rect().center();
    for (int turn = 0; turn < 300; ++turn) {
        QWheelEvent wheel(middle, menu->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(menu, &wheel);
    }
    EXPECT_TRUE(menu->rect().contains(LongMenu::placeOf(LongMenu::last())));
}

TEST(LongMenu, TellsTheWholeOfATitleThatIsCutAndOfNoOther) {
    LongMenu open;
    const auto told = [](int row) {
        const QPoint at = LongMenu::placeOf(row).center();
        QHelpEvent asked(QEvent::ToolTip, at, LongMenu::menu()->mapToGlobal(at));
        QCoreApplication::sendEvent(LongMenu::menu(), &asked);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    const int firstBot = 6;
    EXPECT_EQ(told(firstBot), QString());
    EXPECT_TRUE(told(firstBot + 3).contains(QStringLiteral("&lt;b&gt;") + QString(300, u'w')));
    WAIT_UNTIL(told(firstBot).isEmpty());
}

} // namespace
} // namespace varnhold::testing
