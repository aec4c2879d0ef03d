#include <QApplication>
#include <QDragMoveEvent>
#include <QMimeData>
#include <string>
#include <vector>

#include "pictures.h"
#include "shown_sheets.h"
#include "views/colors/colors.h"
#include "views/desktop/application_icon.h"

namespace varnhold::testing {
namespace {

struct WindowPictures : ::testing::TestWithParam<Look>, ShownSheets {
    void SetUp() override {
        QApplication::setPalette(paletteOf(GetParam()));
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
        QString look(GetParam().highContrast ? QStringLiteral("-strong") : QString());
        look += GetParam().dark ? QStringLiteral("-dark") : QString();
        expectPicture(QString::fromLatin1(name) + look,
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

// Names of every length and script, more bots than there is room for, and all states that a row
// has.
TEST_P(WindowPictures, LongAndForeignNames) {
    const std::vector<std::string> names{std::string(200, 'W'),
                                         "مساعد البحث العلمي الطويل جدا",
                                         "עוזר מחקר ארוך מאוד לצוות כולו",
                                         "🏳️‍🌈 Pride 👩‍👩‍👧‍👦",
                                         "Ops",
                                         "A title of words that goes on for longer than any row"};
    for (int number = 0; number < 40; ++number) {
        BotConfig each = varnhold::testing::bot("role-" + std::to_string(number));
        each.title = names[static_cast<std::size_t>(number) % names.size()];
        each.token = number % 3 == 0 ? "" : "token";
        each.isPaused = number % 4 == 1;
        each.service = number % 5 == 2 ? BotService::slack : BotService::telegram;
        view->userBots.push_back(each);
        view->chainBotAssignments[number % 2 == 0 ? "governor" : "architect"].push_back(
            each.launchdLabel);
    }
    view->chainBotAssignments["governor"].resize(4);
    view->chainBotAssignments["architect"].resize(4);
    CustomBotGroup group{.name = names[5] + " at all", .colorHex = "D4F1F9"};
    for (const std::string& name : names) {
        AIModelItem added =
            varnhold::testing::model("m" + std::to_string(view->directModels.size()));
        added.name = name;
        added.family = name;
        view->directModels.push_back(added);
        view->governorModels.push_back(added);
        group.models.push_back(added);
        group.attachedPaths.push_back("/nowhere/" + name + ".txt");
    }
    view->customGroups = {group};
    view->selectedBot = view->userBots.at(3);
    view->showHints = true;
    show({1200, 1100});
    expect("window-names");
}

// A model over the free space under a chain's rows, and over the strip above those of another.
TEST_P(WindowPictures, WhatIsDraggedOverAChain) {
    takeSampleFleet();
    show({1200, 2000});
    QMimeData data;
    data.setText(QStringLiteral("some model"));
    const auto carryTo = [&](const QPointF& at) {
        QDragEnterEvent enter(at.toPoint(), Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &enter);
        QDragMoveEvent move(at.toPoint(), Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(page, &move);
    };
    const QQuickItem* end = named(QStringLiteral("End of Coding Chain"));
    carryTo(end->mapToScene({end->width() / 2, end->height() - 8}));
    expect("window-drop-last", {740, 860, 460, 480});
    carryTo(middleOf(named(QStringLiteral("Top of Coding Chain"))));
    expect("window-drop-first", {740, 860, 460, 480});
}

TEST_P(WindowPictures, Groups) {
    takeSampleFleet();
    show();
    view->showManageGroupsSheet = true;
    expectSheet("sheet-groups", {420, 240});
}

constexpr Look usualLooks[] = {{.dark = false}, {.dark = true}};

constexpr Look strongLooks[] = {{.dark = false, .highContrast = true},
                                {.dark = true, .highContrast = true}};

const auto nameOfLook = [](const auto& which) { return which.param.dark ? "Dark" : "Light"; };

INSTANTIATE_TEST_SUITE_P(All, WindowPictures, ::testing::ValuesIn(usualLooks), nameOfLook);

struct StrongPictures : WindowPictures {};

// One of everything, with the keyboard in a row.
TEST_P(StrongPictures, OfTheWholeWindow) {
    takeSampleFleet();
    CustomBotGroup& group = view->customGroups.front();
    group.attachedPaths = {home.at("launch plan"), home.at("figures.ods")};
    group.objectives = "Ship it by spring.";
    view->userBots.front().isPaused = true;
    view->showHints = true;
    show({1200, 1700});
    this->group(0).toggleObjectives();
    named(QStringLiteral("Claude Opus 4.8"))->forceActiveFocus(Qt::TabFocusReason);
    expect("window-all");
}

TEST_P(StrongPictures, OfASheetAndItsMenu) {
    show();
    view->showAddModelSheet = true;
    view->changed();
    click("Color");
    expectSheet("sheet-colors", {380, 520});
}

INSTANTIATE_TEST_SUITE_P(All, StrongPictures, ::testing::ValuesIn(strongLooks), nameOfLook);

} // namespace
} // namespace varnhold::testing
