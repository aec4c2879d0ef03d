#include "views/status/notifier_display.h"

#include <QCursor>

#include "views/desktop/session_kind.h"

namespace varnhold {

NotifierDisplay::NotifierDisplay(MenuOpener& opener, StatusMenu::Choose choose)
    : opener_(opener),
      choose_(choose),
      menu_(std::move(choose)),
      item_(ExportedMenu::path(), [this] { pressed(); }) {}

// Only panels that don't know that the item is its menu ask us. Where the pointer is we learn from
// an X server alone, and not from one that lives beside a compositor: there a menu of ours would
// stand anywhere, and a press outside of it would be nobody's. So there it is the window.
void NotifierDisplay::pressed() {
    if (desktopIsWayland()) {
        choose_(MenuAction::openModelSelector, {});
        return;
    }
    if (!opener_.pressHasClosedIt()) {
        opener_.open(QRect(QCursor::pos(), QSize(1, 1)), nullptr);
    }
}

} // namespace varnhold
