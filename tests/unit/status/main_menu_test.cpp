#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "status/main_menu.h"

namespace varnhold::testing {
namespace {

using ::testing::ElementsAre;
using Action = MainMenuAction;

const MainMenuRow separator;

MainMenuRow row(const std::string& title, const std::string& key, Action action) {
    return {.title = title, .key = key, .action = action};
}

MainMenuRow shifted(const std::string& title, const std::string& key, Action action) {
    return {.title = title, .key = key, .action = action, .shift = true};
}

TEST(MainMenus, AreThree) {
    const auto menus = mainMenus();
    ASSERT_EQ(menus.size(), 3U);
    EXPECT_EQ(menus[0].title, "Varnhold");
    EXPECT_EQ(menus[1].title, "File");
    EXPECT_EQ(menus[2].title, "Edit");
}

TEST(MainMenus, TheFirstPutsTheWindowAwayWithThePlainQuitKeyAndQuitsWithShift) {
    const MainMenuRow others{.title = "Hide Others",
                             .key = "h",
                             .action = Action::hideOtherApplications,
                             .option = true};
    EXPECT_THAT(mainMenus().at(0).rows,
                ElementsAre(row("About Varnhold", "", Action::orderFrontStandardAboutPanel),
                            separator, row("Preferences…", ",", Action::openModelSelector),
                            separator, row("Hide Varnhold", "h", Action::hide), others,
                            row("Show All", "", Action::unhideAllApplications), separator,
                            row("Close Preferences Window", "q", Action::closePrefsWindow),
                            shifted("Quit Varnhold (Stop All Agents)", "q", Action::terminate)));
}

TEST(MainMenus, FileOpensTheCustomGroupsAndClosesTheWindow) {
    EXPECT_THAT(mainMenus().at(1).rows,
                ElementsAre(shifted("Custom Groups…", "g", Action::openManageCustomGroups),
                            separator, row("Close Window", "w", Action::performClose)));
}

TEST(MainMenus, EditHasTheUsualRowsWithACapitalForRedo) {
    EXPECT_THAT(mainMenus().at(2).rows,
                ElementsAre(row("Undo", "z", Action::undo), row("Redo", "Z", Action::redo),
                            separator, row("Cut", "x", Action::cut), row("Copy", "c", Action::copy),
                            row("Paste", "v", Action::paste),
                            row("Select All", "a", Action::selectAll)));
}

} // namespace
} // namespace varnhold::testing
