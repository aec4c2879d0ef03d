#include <algorithm>
#include <gmock/gmock.h>
#include <string>

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>

#include "settings/ollama.h"
#include "shown_window.h"
#include "views/desktop/application_icon.h"
#include "views/desktop/window_fit.h"
#include "views/qt_presentation.h"
#include "waiting.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Window, HasThreeMenusAndATitle) {
    const ShownWindow shown;
    QStringList titles;
    for (const QAction* menu : shown.window.menuBar()->actions()) {
        titles.append(menu->text());
    }
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Varnhold"), QStringLiteral("File"),
                                   QStringLiteral("Edit")}));
    EXPECT_EQ(shown.window.windowTitle(), QStringLiteral("Varnhold"));
}

TEST(Window, GivesItsPageItsWholeSizeBesideTheMenuBar) {
    ShownWindow shown;
    shown.window.resize(shown.window.sizeOn({2560, 1440}));
    EXPECT_EQ(shown.window.centralWidget()->size(), QSize(1200, 850));
}

TEST(Window, IsNoLargerThanItsScreen) {
    const ShownWindow shown;
    EXPECT_EQ(shown.window.sizeOn({1024, 700}), QSize(1024, 700));
    const QSize available = shown.window.screen()->availableSize();
    EXPECT_EQ(shown.window.size().boundedTo(available), shown.window.size());
}

TEST(Window, KeepsTheSizeThatAWindowManagerGivesIt) {
    QWidget window;
    WindowFit fit(window, [](const QSize& room) { return QSize(400, 300).boundedTo(room); });
    fit.prepareFor(*window.screen());
    window.show();
    window.windowHandle()->resize(500, 350); // before anything of it is seen
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    EXPECT_EQ(window.size(), QSize(500, 350));
}

TEST(Window, ThePlainQuitKeyOnlyAsksForItToBePutAway) {
    ShownWindow shown;
    QTest::keyClick(&shown.window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_THAT(shown.chosen, ElementsAre(MainMenuAction::closePrefsWindow));
}

TEST(Window, TheQuitKeyWithShiftEndsTheProgram) {
    ShownWindow shown;
    QTest::keyClick(&shown.window, Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(shown.chosen, ElementsAre(MainMenuAction::terminate));
}

TEST(Window, ItsOtherKeysLeadToTheirActions) {
    ShownWindow shown;
    QTest::keyClick(&shown.window, Qt::Key_Comma, Qt::ControlModifier);
    QTest::keyClick(&shown.window, Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_THAT(shown.chosen, ElementsAre(MainMenuAction::openModelSelector,
                                          MainMenuAction::openManageCustomGroups));
    QTest::keyClick(&shown.window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_EQ(shown.closings, 1);
    EXPECT_FALSE(shown.window.isVisible());
}

TEST(Window, IsKeptWhenItIsClosedAndShownAgain) {
    ShownWindow shown;
    shown.window.close();
    EXPECT_EQ(shown.closings, 1);
    shown.window.show();
    EXPECT_TRUE(shown.window.isVisible());
}

TEST(Window, ThatIsClosedLetsAModelBePulledToItsEnd) {
    ShownWindow shown;
    ModelSelectorView& record = *shown.home.view;
    record.downloadOllama(model("llama3"));
    EXPECT_THAT(record.downloadingModels, ElementsAre("llama3"));
    shown.window.close();
    shown.home.platform.settle();
    const auto& children = shown.home.platform.children;
    EXPECT_EQ(std::count_if(children.begin(), children.end(),
                            [](const FakePlatform::Child& each) {
                                return each.request == ollamaPullRequest("llama3");
                            }),
              1);
    EXPECT_THAT(record.downloadingModels, IsEmpty());
}

TEST(Window, RedoHasShift) {
    const ShownWindow shown;
    ASSERT_NE(shown.action(QStringLiteral("Redo")), nullptr);
    EXPECT_EQ(shown.action(QStringLiteral("Redo"))->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Shift+Z")));
    EXPECT_EQ(shown.action(QStringLiteral("Hide Others"))->shortcut(),
              QKeySequence(QStringLiteral("Ctrl+Alt+H")));
}

TEST(ApplicationIcon, IsOursUntilTheUserPutsAnotherInItsPlace) {
    const SettingsHome home;
    FakePlatform platform;
    QtPresentation presentation({platform.interfaces, home.constants});
    const auto shown = [] { return QApplication::windowIcon().pixmap(64, 64).toImage(); };
    const QImage ours = defaultApplicationIcon().pixmap(64, 64).toImage();
    EXPECT_EQ(shown(), ours);

    EXPECT_FALSE(presentation.isImage("/nonexistent/icon.png"));
    const std::string text = home.home.at("text.png");
    home.write(text, "no picture");
    EXPECT_FALSE(presentation.isImage(text));

    const std::string another = home.home.at("another.png");
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    ASSERT_TRUE(picture.save(QString::fromStdString(another)));
    presentation.setApplicationIcon(another);
    EXPECT_EQ(shown().pixelColor(32, 32), QColor(Qt::magenta));
    QApplication::setWindowIcon(defaultApplicationIcon());
}

TEST(ApplicationIcon, IsNotTakenFromAFileThatHoldsNoPicture) {
    const SettingsHome home;
    FakePlatform platform;
    QtPresentation presentation({platform.interfaces, home.constants});
    const std::string picture = home.home.at("picture.png");
    const std::string text = home.home.at("text.png");
    ASSERT_TRUE(QImage(2, 2, QImage::Format_RGB32).save(QString::fromStdString(picture)));
    home.write(text, "no picture");
    EXPECT_TRUE(presentation.isImage(picture));
    EXPECT_FALSE(presentation.isImage(text));
    EXPECT_FALSE(presentation.isImage("/nonexistent/icon.png"));
}

TEST(ApplicationIcon, IsPaintedAtEverySize) {
    for (const int side : {16, 22, 26, 32, 48, 64, 128, 256}) {
        const QImage icon = defaultApplicationIcon().pixmap(QSize(side, side), qreal(1)).toImage();
        EXPECT_EQ(icon.size(), QSize(side, side));
        EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
        EXPECT_EQ(icon.pixelColor(side / 2, side / 2).alpha(), 255);
    }
}

} // namespace
} // namespace varnhold::testing
