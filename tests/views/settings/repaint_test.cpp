#include <QApplication>
#include <QWheelEvent>
#include <algorithm>

#include "at_rest.h"
#include "shown_sheets.h"
#include "views/colors/colors.h"

// After each change what is on the screen is what painting everything anew gives: no line is left
// behind, and none is missing, whatever the scale.
namespace varnhold::testing {
namespace {

struct RepaintPictures : ::testing::Test, ShownSheets {
    int stillFrames = 12; // after which nothing is expected to move

    RepaintPictures() {
        QApplication::setCursorFlashTime(0); // a cursor that stays
        takeSampleFleet();
        platform.settle();
    }
    ~RepaintPictures() override {
        QApplication::setCursorFlashTime(1000);
        QApplication::setPalette(lightPalette());
    }

    // Another colour under everything, of which nothing is seen, is a reason to paint all of it.
    void paintAnew() const {
        QQuickWindow& scene = *page->quickWindow();
        scene.setColor(scene.color() == Qt::black ? Qt::white : Qt::black);
        page->repaint();
    }

    void expectWhole(const char* change) {
        platform.settle();
        const QImage shown = seenAtRest(window, stillFrames);
        paintAnew();
        const QRect wrong =
            difference(shown, seenAtRest(window)); // what comes late is there by now
        EXPECT_TRUE(wrong.isEmpty()) << change << ", within " << wrong.width() << "x"
                                     << wrong.height() << "+" << wrong.x() << "+" << wrong.y();
    }

    void point(const QPoint& at) const { QTest::mouseMove(page, at); }

    void turnWheel(const QPoint& at, int notches) const {
        QWheelEvent turn(at, page->mapToGlobal(at), {}, {0, 120 * notches}, Qt::NoButton, {},
                         Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(page, &turn);
    }
};

TEST_F(RepaintPictures, PointerGoesOverEverything) {
    show();
    expectWhole("the window opens");
    stillFrames = 60; // tool tips come that late
    for (int y = 20; y < page->height(); y += 191) {
        for (int x = 20; x < page->width(); x += 313) {
            point({x, y});
            expectWhole("the pointer moves");
        }
    }
}

TEST_F(RepaintPictures, AreasScroll) {
    show();
    for (const QPoint at : {QPoint(150, 300), QPoint(500, 150), QPoint(800, 700)}) {
        for (int notch = 0; notch < 4; ++notch) {
            turnWheel(at, -1);
            expectWhole("a turn of the wheel");
        }
        turnWheel(at, 2);
        expectWhole("a turn back");
    }
}

TEST_F(RepaintPictures, ColoursChange) {
    show();
    for (const bool highContrast : {false, true}) {
        for (const bool dark : {true, false, true}) {
            QApplication::setPalette(paletteOf({.dark = dark, .highContrast = highContrast}));
            expectWhole("other colours");
        }
    }
}

TEST_F(RepaintPictures, RowsComeGoAndChangePlaces) {
    show();
    view->workerModels.push_back(view->architectModels.front());
    view->changed();
    expectWhole("a model comes");
    std::rotate(view->architectModels.begin(), view->architectModels.begin() + 1,
                view->architectModels.end());
    view->changed();
    expectWhole("models change places");
    view->architectModels.pop_back();
    view->changed();
    expectWhole("a model goes");
    view->userBots.front().isPaused = !view->userBots.front().isPaused;
    view->changed();
    expectWhole("a bot is paused");
    view->userBots.pop_back();
    view->changed();
    expectWhole("a bot goes");
}

TEST_F(RepaintPictures, SheetsComeAndGo) {
    show();
    view->showAddModelSheet = true;
    view->changed();
    expectWhole("a sheet comes");
    type(QStringLiteral("gpt-5"));
    expectWhole("something is typed");
    view->showAddModelSheet = false;
    view->changed();
    expectWhole("the sheet goes");
    view->alertMsg = "Cerebras models are thinking/reasoning only.";
    view->showAlert = true;
    view->changed();
    expectWhole("an alert comes");
    view->showAlert = false;
    view->changed();
    expectWhole("the alert goes");
}

TEST_F(RepaintPictures, TextIsWritten) {
    show();
    click("Master Prompt Injection");
    for (const char* word : {"Be", " kind", " to", " all"}) {
        type(QString::fromLatin1(word));
        expectWhole("a word is written");
    }
    press(Qt::Key_A, Qt::ControlModifier);
    expectWhole("all is marked");
    press(Qt::Key_Delete);
    expectWhole("all is gone");
    for (int i = 0; i < 12; ++i) {
        press(Qt::Key_Tab);
        expectWhole("the focus moves");
    }
}

} // namespace
} // namespace varnhold::testing
