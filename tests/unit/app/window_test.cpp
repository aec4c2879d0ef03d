#include "supervisor.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

TEST(SettingsWindow, OpensAtASecondStartWithoutTouchingTheFleet) {
    Supervisor supervisor;
    supervisor.writeBots({bot("a")});
    supervisor.launch();
    EXPECT_TRUE(supervisor.delegate->applicationShouldHandleReopen(true));
    EXPECT_THAT(supervisor.presentation.record,
                ElementsAre("window made", "regular", "window to front", "activate"));
    EXPECT_THAT(supervisor.platform.commandLines(), IsEmpty());
    supervisor.platform.settle();
    EXPECT_EQ(supervisor.presentation.record.back(), "activate");
    EXPECT_EQ(supervisor.presentation.record.size(), 5U);
}

TEST(SettingsWindow, TakesTheIconThatIsThereWhenItIsOpened) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.home.write(supervisor.constants.appIconFile, "put there later");
    supervisor.presentation.images = {supervisor.constants.appIconFile};
    supervisor.delegate->openModelSelector();
    EXPECT_THAT(supervisor.presentation.record,
                ElementsAre("window made", "regular", "icon " + supervisor.constants.appIconFile,
                            "window to front", "activate"));
}

TEST(SettingsWindow, IsMadeOnceHoweverOftenItIsOpened) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onMenuChosen(MenuAction::openModelSelector, "");
    supervisor.presentation.events.onMainMenuChosen(MainMenuAction::openModelSelector);
    EXPECT_EQ(supervisor.presentation.windowsMade, 1);
}

TEST(SettingsWindow, ThatIsClosedByThePlainQuitKeyLeavesTheFleetRunning) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->openModelSelector();
    supervisor.platform.settle();
    supervisor.forget();
    supervisor.presentation.events.onMainMenuChosen(MainMenuAction::closePrefsWindow);
    EXPECT_THAT(supervisor.presentation.record, ElementsAre("window closed", "accessory"));
    EXPECT_FALSE(supervisor.presentation.terminated);
    EXPECT_THAT(supervisor.platform.record, IsEmpty());
}

TEST(SettingsWindow, ThatWasNeverOpenedCannotBeClosed) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->closePrefsWindow();
    EXPECT_THAT(supervisor.presentation.record, IsEmpty());
}

TEST(SettingsWindow, ThatTheUserClosesMakesTheProgramAnAccessoryAgain) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.delegate->openModelSelector();
    EXPECT_EQ(supervisor.presentation.policy, ActivationPolicy::regular);
    supervisor.presentation.events.onWindowClosed();
    EXPECT_EQ(supervisor.presentation.policy, ActivationPolicy::accessory);
}

TEST(CustomGroups, OpenTheWindowFirstAndTheirSheetAMomentLater) {
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onMainMenuChosen(MainMenuAction::openManageCustomGroups);
    EXPECT_TRUE(supervisor.presentation.windowShown);
    supervisor.platform.advance(299ms);
    EXPECT_EQ(supervisor.presentation.sheetsPresented, 0);
    supervisor.platform.advance(1ms);
    EXPECT_EQ(supervisor.presentation.sheetsPresented, 1);
}

TEST(MainMenu, QuitsOnlyWithShift) {
    for (const MainMenu& menu : mainMenus()) {
        for (const MainMenuRow& row : menu.rows) {
            if (row.key == "q") {
                EXPECT_EQ(row.action == MainMenuAction::terminate, row.shift);
            }
        }
    }
    Supervisor supervisor;
    supervisor.launch();
    supervisor.presentation.events.onMainMenuChosen(MainMenuAction::terminate);
    EXPECT_TRUE(supervisor.presentation.terminated);
}

} // namespace
} // namespace varnhold::testing
