#include "views/status/notifier_display.h"

#include <QCursor>
#include <string>
#include <utility>

#include "views/desktop/session_kind.h"
#include "views/desktop/token_in_use.h"

namespace varnhold {

NotifierDisplay::NotifierDisplay(MenuOpener& opener, StatusMenu::Choose choose)
    : opener_(opener),
      menu_([this, choose = std::move(choose)](MenuAction action, const std::string& value) {
          withToken(item_.takeToken(), [&] { choose(action, value); });
      }),
      item_(ExportedMenu::path(), [this] { return pressed(); }) {}

// Only panels that don't know that the item is its menu ask us. Where the pointer is we learn from
// an X server alone, and not from one that lives beside a compositor: there a menu of ours would
// stand anywhere, and a press outside of it would be nobody's. So there it is the panel's.
bool NotifierDisplay::pressed() {
    if (desktopIsWayland()) {
        return false;
    }
    if (!opener_.pressHasClosedIt()) {
        opener_.open(QRect(QCursor::pos(), QSize(1, 1)), nullptr);
    }
    return true;
}

} // namespace varnhold
