#pragma once

#include <QAction>
#include <QTest>
#include <gtest/gtest.h>
#include <vector>

#include "unit/settings/settings_home.h"
#include "views/settings/settings_window_view.h"

namespace varnhold::testing {

// The settings window on a record of its own, with what it asked of the application.
struct ShownWindow {
    SettingsHome home;
    FleetContext fleet{home.platform.interfaces, home.constants};
    SettingsModel model{{home.open(), fleet}};
    std::vector<MainMenuAction> chosen;
    int closings = 0;
    SettingsWindowView window{mainMenus(), model,
                              [this](MainMenuAction action) { chosen.push_back(action); },
                              [this] { ++closings; }};

    ShownWindow() {
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    [[nodiscard]] QAction* action(const QString& title) const {
        for (QAction* each : window.findChildren<QAction*>()) {
            if (each->text() == title) {
                return each;
            }
        }
        return nullptr;
    }
};

} // namespace varnhold::testing
