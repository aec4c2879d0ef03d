#include "shown_settings.h"

namespace varnhold::testing {
namespace {

TEST(SettingsPage, FillsItsWindow) {
    ShownSettings settings;
    settings.show();
    EXPECT_EQ(settings.page->rootObject()->size(), QSizeF(settings.page->size()));
    EXPECT_GE(settings.page->width(), 1200);
}

} // namespace
} // namespace varnhold::testing
