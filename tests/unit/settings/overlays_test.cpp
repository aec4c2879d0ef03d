#include "settings/overlays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string_view>

namespace varnhold::testing {
namespace {

TEST(Overlays, AreNoneByThemselves) {
    const SettingsFields fields;
    EXPECT_EQ(nextOverlay(fields, Overlay::none), Overlay::none);
    EXPECT_EQ(name(Overlay::none), "");
}

TEST(Overlays, OfAFirstRunBeginWithTheWelcomeAndGoOnWithTheTip) {
    SettingsFields fields;
    fields.showWelcome = true;
    fields.showLibraryTip = true;
    EXPECT_EQ(nextOverlay(fields, Overlay::none), Overlay::welcome);
    fields.showWelcome = false;
    EXPECT_EQ(nextOverlay(fields, Overlay::welcome), Overlay::libraryTip);
}

TEST(Overlays, StayUntilTheyAreDoneWithWhateverElseIsWanted) {
    SettingsFields fields;
    fields.showManageGroupsSheet = true;
    EXPECT_EQ(nextOverlay(fields, Overlay::none), Overlay::manageGroups);
    fields.showAlert = true;
    fields.showWelcome = true;
    EXPECT_EQ(nextOverlay(fields, Overlay::manageGroups), Overlay::manageGroups);
    fields.showManageGroupsSheet = false;
    EXPECT_EQ(nextOverlay(fields, Overlay::manageGroups), Overlay::alert);
}

TEST(Overlays, AllHaveTheirTurnAndNamesOfTheirOwn) {
    SettingsFields fields;
    fields.showAlert = fields.showWelcome = fields.showAddModelSheet = true;
    fields.showLibraryTip = fields.showManageGroupsSheet = true;
    fields.editingBot = fields.tokenSheetBot = builtInGovernorBot();
    std::set<std::string_view> names;
    for (Overlay now = nextOverlay(fields, Overlay::none); now != Overlay::none;
         now = nextOverlay(fields, now)) {
        names.insert(name(now));
        switch (now) {
        case Overlay::alert:
            fields.showAlert = false;
            break;
        case Overlay::promptEditor:
            fields.editingBot.reset();
            break;
        case Overlay::tokenSheet:
            fields.tokenSheetBot.reset();
            break;
        case Overlay::welcome:
            fields.showWelcome = false;
            break;
        case Overlay::addModel:
            fields.showAddModelSheet = false;
            break;
        case Overlay::libraryTip:
            fields.showLibraryTip = false;
            break;
        default:
            fields.showManageGroupsSheet = false;
        }
    }
    EXPECT_THAT(names,
                ::testing::UnorderedElementsAre("alert", "promptEditor", "tokenSheet", "welcome",
                                                "addModel", "libraryTip", "manageGroups"));
}

} // namespace
} // namespace varnhold::testing
