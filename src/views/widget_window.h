#pragma once

#include <string>
#include <vector>

#include "lifecycle/fleet_context.h"
#include "status/presentation.h"
#include "views/settings/settings_model.h"
#include "views/settings/settings_window_view.h"

class QScreen;

namespace varnhold {

// The settings window with the record that it shows, both made when it is first wanted. Main
// thread.
class WidgetWindow final : public SettingsWindow {
public:
    // `menus`: of its menu bar; with none it has no bar.
    // `screen`: on which it is to appear first.
    WidgetWindow(const FleetContext& fleet, const std::vector<MainMenu>& menus,
                 const PresentationEvents& events, const QScreen& screen);

    void bringToFront() override;
    void close() override { window_.close(); }
    void presentCustomGroups() override { model_.openManageCustomGroups(); }
    void presentAlert(const std::string& text) override;

    // Whether it has the keyboard.
    [[nodiscard]] bool isActive() const { return window_.isActiveWindow(); }
    // See SettingsWindowView.
    bool perform(MainMenuAction action) { return window_.perform(action); }

private:
    ModelSelectorView record_;
    SettingsModel model_;
    SettingsWindowView window_;
};

// Asks for the keyboard for whichever of these is shown.
void activateSettingsWindow();

} // namespace varnhold
