#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "views/macos/menu_selectors.h"

namespace varnhold {
namespace {

using ::testing::ElementsAre;

// Each row of the main menu with what a Mac's own responders are asked; "ours" for the rest.
std::vector<std::string> rowsOf(const MainMenu& menu) {
    std::vector<std::string> rows;
    for (const MainMenuRow& row : menu.rows) {
        if (row.action != MainMenuAction::none) {
            const char* selector = standardSelector(row.action);
            rows.push_back(row.title + " " + (selector == nullptr ? "ours" : selector));
        }
    }
    return rows;
}

TEST(MenuSelectors, LeaveToTheSystemWhatItsOwnRespondersDo) {
    const std::vector<MainMenu> menus = mainMenus();
    EXPECT_THAT(rowsOf(menus[0]),
                ElementsAre("About Varnhold orderFrontStandardAboutPanel:", "Preferences… ours",
                            "Hide Varnhold hide:", "Hide Others hideOtherApplications:",
                            "Show All unhideAllApplications:", "Close Preferences Window ours",
                            "Quit Varnhold (Stop All Agents) ours"));
    EXPECT_THAT(rowsOf(menus[1]), ElementsAre("Custom Groups… ours", "Close Window performClose:"));
    EXPECT_THAT(rowsOf(menus[2]), ElementsAre("Undo undo:", "Redo redo:", "Cut cut:", "Copy copy:",
                                              "Paste paste:", "Select All selectAll:"));
}

TEST(MenuSelectors, KnowNoneForASeparator) {
    EXPECT_EQ(standardSelector(MainMenuAction::none), nullptr);
}

} // namespace
} // namespace varnhold
