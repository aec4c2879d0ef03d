#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QRect>
#include <functional>
#include <vector>

#include "views/status/status_menu.h"

namespace varnhold {

// Opens the status menu beside whatever shows the status item, one at a time. Main thread.
class MenuOpener final {
public:
    // `choose` is called from the event loop, after the menu has closed.
    explicit MenuOpener(StatusMenu::Choose choose);
    ~MenuOpener() { delete menu_; }
    MenuOpener(const MenuOpener&) = delete;
    MenuOpener& operator=(const MenuOpener&) = delete;

    // For the next opening; a menu that is open stays as it is.
    void setRows(std::vector<MenuRow> rows) { rows_ = std::move(rows); }

    // Opens the menu under the anchor, a rectangle on the screen, unless it is open. `parent`: the
    // window that was pressed, or none.
    void open(const QRect& anchor, QWidget* parent);
    [[nodiscard]] bool isOpen() const { return menu_ != nullptr; }

    // Whether a press of this very moment is the one that has closed the menu, so that a second
    // press on the item closes it and doesn't open it again.
    [[nodiscard]] bool pressHasClosedIt() const;

    // Called as the menu goes, in the middle of its end: do nothing there but note it.
    void onClosed(std::function<void()> closed) { closed_ = std::move(closed); }

private:
    QObject choices_; // what has been chosen waits here, since the menu deletes itself
    StatusMenu::Choose choose_;
    std::function<void()> closed_;
    std::vector<MenuRow> rows_;
    QPointer<StatusMenu> menu_;
    QElapsedTimer sincePressOutside_;
};

} // namespace varnhold
