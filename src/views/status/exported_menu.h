#pragma once

#include <QMenu>
#include <QTimer>

#include "views/status/status_menu.h"

namespace varnhold {

// The status menu for panels that draw it themselves from what they are told over D-Bus. Main
// thread.
//
// It is one menu for the life of the tray icon. Rows that only change their text do so in place,
// even while the panel shows them. Rows that come and go wait until a moment after the panel has
// closed the menu, so that nobody's click lands on a row that has just moved or gone.
class ExportedMenu final : public QMenu {
    Q_OBJECT
public:
    explicit ExportedMenu(StatusMenu::Choose choose);

    void setRows(const std::vector<MenuRow>& rows);

private:
    void opened();
    void closed();
    void settled();
    void rebuild();
    void append(const MenuRow& row);

    StatusMenu::Choose choose_;
    std::vector<MenuRow> rows_;  // wanted
    std::vector<MenuRow> shown_; // in the actions
    bool isOpen_ = false;        // or was a moment ago
    QTimer forgotten_;
    QTimer settled_;
};

// A text made from data as such a panel wants it: there a single "_" marks the underlined letter,
// and the toolkit turns the first "&" into one.
[[nodiscard]] QString exportedText(std::string_view text);

} // namespace varnhold
