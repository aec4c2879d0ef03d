#include "settings/first_run.h"

#include "window.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;

using namespace std::chrono_literals;

void appear(Window& window) {
    window.view->appear();
    window.platform.advance(1s);
    window.platform.defaults.written.clear(); // of the save that comes with it
}

TEST(FirstRun, HasNoSheetsUntilTheyAreWanted) {
    Window window;
    EXPECT_FALSE(welcomeSheet(*window.view));
    EXPECT_FALSE(libraryTipSheet(*window.view));
}

TEST(FirstRun, RemembersThatTheWelcomeWasDismissedAndKeepsTheTip) {
    Window window;
    appear(window);
    welcomeSheet(*window.view)->onDismiss();
    EXPECT_THAT(window.platform.defaults.written, ElementsAre("hasSeenWelcome_v7"));
    EXPECT_TRUE(window.platform.defaults.boolean("hasSeenWelcome_v7"));
    EXPECT_FALSE(window.view->showWelcome);
    EXPECT_TRUE(window.view->showLibraryTip);
}

TEST(FirstRun, RemembersThatTheTipWasDismissedAndOpensNoForm) {
    Window window;
    appear(window);
    libraryTipSheet(*window.view)->onDismiss();
    EXPECT_THAT(window.platform.defaults.written, ElementsAre("hasSeenLibraryTip_v1"));
    EXPECT_FALSE(window.view->showLibraryTip);
    EXPECT_FALSE(window.view->showAddModelSheet);
    EXPECT_TRUE(window.view->showWelcome);
}

TEST(FirstRun, DoesNotComeBackInThisRunOrTheNext) {
    Window window;
    appear(window);
    welcomeSheet(*window.view)->onDismiss();
    libraryTipSheet(*window.view)->onDismiss();
    appear(window);
    EXPECT_FALSE(welcomeSheet(*window.view));
    window.open();
    appear(window);
    EXPECT_FALSE(welcomeSheet(*window.view));
    EXPECT_FALSE(libraryTipSheet(*window.view));
}

TEST(FirstRun, ShowsWhatWasNotDismissedOnTheNextOpening) {
    Window window;
    appear(window);
    window.open();
    appear(window);
    EXPECT_TRUE(welcomeSheet(*window.view));
    EXPECT_TRUE(libraryTipSheet(*window.view));
    EXPECT_FALSE(window.platform.defaults.boolean("hasSeenWelcome_v7"));
    EXPECT_FALSE(window.platform.defaults.boolean("hasSeenLibraryTip_v1"));
}

TEST(FirstRun, TellsOfEachDismissal) {
    Window window;
    appear(window);
    int changes = 0;
    window.view->observe([&](Animation) { ++changes; });
    welcomeSheet(*window.view)->onDismiss();
    EXPECT_EQ(changes, 1);
    libraryTipSheet(*window.view)->onDismiss();
    EXPECT_EQ(changes, 2);
}

} // namespace
} // namespace varnhold::testing
