#pragma once

#include <QMainWindow>
#include <functional>
#include <vector>

#include "status/main_menu.h"
#include "views/settings/settings_page.h"

class QScreen;

namespace varnhold {

class WindowFit;

// The settings window: its size, its menu bar and its keys, around a page. Closing hides it.
class SettingsWindowView final : public QMainWindow {
    Q_OBJECT
public:
    using Choose = std::function<void(MainMenuAction action)>;

    // The model must outlive the window. Without menus it has no menu bar: where the system has
    // one for all programs, somebody else sees to it.
    SettingsWindowView(const std::vector<MainMenu>& menus, SettingsModel& model,
                       const Choose& choose, std::function<void()> closed);

    // Before it first shows; later it comes where it was.
    void appearOn(const QScreen& screen);

    // That its page has its whole size beside the menu bar, or as much of it as the screen has room
    // for.
    [[nodiscard]] QSize sizeOn(const QSize& screen) const;

    // Shows it before all others. True if it was closed until then, and not just put aside.
    bool bringToFront();

    // Does what concerns this window or the toolkit alone; false for the rest, which is the
    // application's.
    bool perform(MainMenuAction action);

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void addMenu(const MainMenu& menu, const Choose& choose);
    void putAside();

    SettingsModel& model_;
    SettingsPage* page_; // owned as the central widget
    WindowFit* fit_ = nullptr;
    std::function<void()> closed_;
    bool aside_ = false; // hidden, and yet not closed
};

} // namespace varnhold
