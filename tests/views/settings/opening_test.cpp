#include <QApplication>
#include <memory>

#include "shown_settings.h"
#include "views/qt_presentation.h"
#include "views/settings/settings_window_view.h"

namespace varnhold::testing {
namespace {

using namespace std::chrono_literals;

// The window as the program opens it, with a record of its own inside.
struct Opening : ::testing::Test, SettingsHome {
    QtPresentation presentation{{platform.interfaces, constants}};
    std::unique_ptr<SettingsWindow> window;
    int closings = 0;

    void SetUp() override {
        platform.defaults.booleans = {{"hasSeenWelcome_v7", true}, {"hasSeenLibraryTip_v1", true}};
        presentation.connect(
            {.onMainMenuChosen = [](MainMenuAction) {}, .onWindowClosed = [this] { ++closings; }});
        presentation.installMainMenu(mainMenus());
    }
    void bringToFront() {
        if (!window) {
            window = presentation.createSettingsWindow();
        }
        window->bringToFront();
        platform.settle();
    }
    [[nodiscard]] static SettingsWindowView* shown() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (auto* view = qobject_cast<SettingsWindowView*>(widget); view && view->isVisible()) {
                return view;
            }
        }
        return nullptr;
    }
    [[nodiscard]] static bool shows(const char* name) {
        const auto* page = shown() ? shown()->findChild<SettingsPage*>() : nullptr;
        return page != nullptr && announced(page->rootObject(), QString::fromUtf8(name)) != nullptr;
    }
};

TEST_F(Opening, RunsItsStepsAgainTheSecondTimeButKeepsTheRecord) {
    write(constants.workerPrefsFile, encodeChain({model("first")}));
    bringToFront();
    EXPECT_EQ(read(constants.workerPrefsFile), encodeChain({model("first")}));
    write(constants.workerPrefsFile, encodeChain({model("from elsewhere")}));
    window->close();
    bringToFront();
    // It saved what it had: the file wasn't read again.
    EXPECT_EQ(read(constants.workerPrefsFile), encodeChain({model("first")}));
}

TEST_F(Opening, WhatIsShownAlreadyDoesNotAppearAgain) {
    bringToFront();
    write(constants.workerPrefsFile, "untouched");
    bringToFront();
    EXPECT_EQ(read(constants.workerPrefsFile), "untouched");
}

TEST_F(Opening, LeavesAMaximisedWindowMaximised) {
    bringToFront();
    shown()->showMaximized();
    bringToFront();
    EXPECT_TRUE(shown()->isMaximized());
    shown()->setWindowState(shown()->windowState() | Qt::WindowMinimized);
    bringToFront();
    EXPECT_FALSE(shown()->isMinimized());
    EXPECT_TRUE(shown()->isMaximized());
    window->close();
    bringToFront();
    EXPECT_TRUE(shown()->isMaximized());
}

TEST_F(Opening, ClosingHidesTheWindowAndKeepsIt) {
    bringToFront();
    const SettingsWindowView* first = shown();
    ASSERT_NE(first, nullptr);
    window->close();
    EXPECT_EQ(shown(), nullptr);
    EXPECT_EQ(closings, 1);
    bringToFront();
    EXPECT_EQ(shown(), first);
}

TEST_F(Opening, TheRequestForCustomGroupsOpensTheirSheet) {
    bringToFront();
    EXPECT_FALSE(shows("Custom Groups"));
    window->presentCustomGroups();
    EXPECT_TRUE(shows("Custom Groups"));
}

TEST_F(Opening, ASheetThatStoodStandsThereAgain) {
    bringToFront();
    window->presentCustomGroups();
    window->close();
    bringToFront();
    EXPECT_TRUE(shows("Custom Groups"));
}

TEST_F(Opening, ASheetOfAnEarlierWindowDoesNotStandInTheNext) {
    bringToFront();
    window->presentCustomGroups();
    window.reset();
    bringToFront();
    EXPECT_FALSE(shows("Custom Groups"));
}

TEST_F(Opening, ARequestForCustomGroupsReachesAWindowThatIsNotShown) {
    window = presentation.createSettingsWindow();
    window->presentCustomGroups();
    EXPECT_EQ(shown(), nullptr);
    bringToFront();
    EXPECT_TRUE(shows("Custom Groups"));
}

} // namespace
} // namespace varnhold::testing
