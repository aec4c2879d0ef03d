#include "views/widget_window.h"

#include <QApplication>
#include <QScreen>
#include <string>
#include <vector>

namespace varnhold {

WidgetWindow::WidgetWindow(const FleetContext& fleet, const std::vector<MainMenu>& menus,
                           const PresentationEvents& events, const QScreen& screen)
    : record_(fleet.platform, fleet.constants),
      model_({record_, fleet}),
      window_(menus, model_, events.onMainMenuChosen, events.onWindowClosed) {
    window_.appearOn(screen);
}

void WidgetWindow::bringToFront() {
    if (window_.bringToFront()) {
        model_.appear();
    }
}

void WidgetWindow::presentAlert(const std::string& text) {
    record_.alertMsg = text;
    record_.showAlert = true;
    record_.changed();
}

void activateSettingsWindow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<SettingsWindowView*>(window) != nullptr) {
            window->activateWindow();
        }
    }
}

} // namespace varnhold
