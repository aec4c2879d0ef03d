#include <QApplication>
#include <filesystem>

#include "pictures.h"
#include "shown_sheets.h"
#include "views/colors/colors.h"
#include "views/desktop/application_icon.h"

namespace varnhold::testing {
namespace {

struct WindowPictures : ::testing::TestWithParam<bool>, ShownSheets {
    void SetUp() override {
        QApplication::setPalette(GetParam() ? darkPalette() : lightPalette());
        QApplication::setCursorFlashTime(0); // a cursor that stays
    }
    void TearDown() override {
        QApplication::setCursorFlashTime(1000);
        QApplication::setPalette(lightPalette());
    }

    void expect(const char* name, const QRect& part = {}) {
        platform.settle();
        // Drawn now, where the widget's own picture may be a frame behind.
        const QImage all = page->grabFramebuffer();
        const qreal scale = all.devicePixelRatio();
        const QRect pixels(part.topLeft() * scale, part.size() * scale);
        expectPicture(QString::fromLatin1(name) +
                          (GetParam() ? QStringLiteral("-dark") : QString()),
                      QPixmap::fromImage(part.isNull() ? all : all.copy(pixels)));
    }

    // The sheet of that name when it has come, with some of what it dims.
    void expectSheet(const char* name, const QSize& size) {
        view->changed();
        const auto* overlays =
            page->rootObject()->findChild<QQuickItem*>(QStringLiteral("overlays"));
        ASSERT_NE(overlays, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([overlays] { return overlays->property("settled").toBool(); }));
        QRect part(QPoint(), size + QSize(80, 80));
        part.moveCenter(page->rect().center());
        expect(name, part);
    }

    void takeSampleFleet() {
        std::filesystem::copy(VIEWS_TESTS "/../../examples/fleet", constants.appSupportDir,
                              std::filesystem::copy_options::recursive |
                                  std::filesystem::copy_options::overwrite_existing);
        open();
        view->loadSettings();
        view->refresh();
    }
};

TEST_P(WindowPictures, WithNothingInIt) {
    show();
    expect("window-empty");
}

TEST_P(WindowPictures, WithTheSampleFleet) {
    takeSampleFleet();
    show();
    expect("window-fleet");
}

TEST_P(WindowPictures, WithHints) {
    takeSampleFleet();
    view->showHints = true;
    show();
    expect("window-hints");
}

// On a screen high enough for all of it.
TEST_P(WindowPictures, EveryChainAndAGroupWithAllItCanHold) {
    takeSampleFleet();
    CustomBotGroup& group = view->customGroups.front();
    group.attachedPaths = {home.at("launch plan"), home.at("figures.ods")};
    home.makeFolder(group.attachedPaths.front());
    group.doctrine = {home.at("launch plan/doctrine.txt")};
    group.objectives = "Ship it by spring.\nKeep everybody sane.";
    show({1200, 2000});
    this->group(0).toggleObjectives();
    expect("window-chains", {280, 420, 920, 1220});
}

TEST_P(WindowPictures, Alert) {
    show();
    view->alertMsg = "Cerebras models are thinking/reasoning only — they cannot execute tool calls "
                     "or process media. Place them in the Architect or Governor chain only.";
    view->showAlert = true;
    expectSheet("sheet-alert", {320, 180});
}

TEST_P(WindowPictures, TokenSheet) {
    show();
    view->tokenSheetBot = varnhold::testing::bot("ops");
    expectSheet("sheet-token", {480, 210});
}

TEST_P(WindowPictures, PromptEditor) {
    show();
    view->editingBot = view->userBots.front();
    expectSheet("sheet-prompt", {500, 400});
}

TEST_P(WindowPictures, Welcome) {
    show();
    view->showWelcome = true;
    expectSheet("sheet-welcome", {560, 620});
}

TEST_P(WindowPictures, EndOfTheWelcome) {
    show();
    view->showWelcome = true;
    view->changed();
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    expectSheet("sheet-welcome-end", {560, 620});
}

TEST_P(WindowPictures, LibraryTip) {
    show();
    view->showLibraryTip = true;
    expectSheet("sheet-tip", {420, 400});
}

TEST_P(WindowPictures, AddModel) {
    show();
    view->showAddModelSheet = true;
    view->changed();
    type(QStringLiteral("gpt-5"));
    expectSheet("sheet-add-model", {380, 300});
}

TEST_P(WindowPictures, About) {
    QApplication::setWindowIcon(defaultApplicationIcon());
    constants.VARNHOLD_VERSION = "1.2.3";
    show();
    model->sheets()->showAbout();
    expectSheet("sheet-about", {320, 320});
}

TEST_P(WindowPictures, ColorsToChooseFrom) {
    show();
    view->showAddModelSheet = true;
    view->changed();
    click("Color");
    expectSheet("sheet-colors", {380, 520});
}

// The keyboard in rows of strong colours, and the pointer over others.
TEST_P(WindowPictures, RowsWithTheKeyboardAndUnderThePointer) {
    takeSampleFleet();
    show();
    named(QStringLiteral("Claude Opus 4.8"))->forceActiveFocus(Qt::TabFocusReason);
    QTest::mouseMove(page, middleOf(named(QStringLiteral("DeepSeek Chat"))));
    expect("window-rows", {0, 350, 281, 500});
}

TEST_P(WindowPictures, Groups) {
    takeSampleFleet();
    show();
    view->showManageGroupsSheet = true;
    expectSheet("sheet-groups", {420, 240});
}

INSTANTIATE_TEST_SUITE_P(All, WindowPictures, ::testing::Bool(),
                         [](const auto& which) { return which.param ? "Dark" : "Light"; });

} // namespace
} // namespace varnhold::testing
