#pragma once

#include <QMainWindow>
#include <functional>

#include "status/main_menu.h"

namespace varnhold {

// The settings window's frame: its size, its menu bar and its keys. Closing hides it.
class SettingsWindowView final : public QMainWindow {
    Q_OBJECT
public:
    using Choose = std::function<void(MainMenuAction action)>;

    SettingsWindowView(const std::vector<MainMenu>& menus, Choose choose,
                       std::function<void()> closed);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addMenu(const MainMenu& menu, const Choose& choose);
    bool perform(MainMenuAction action);
    void editFocused(const char* slot);
    void showAbout();

    std::function<void()> closed_;
};

} // namespace varnhold
