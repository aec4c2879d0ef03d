#pragma once

#include <QMenu>
#include <QRect>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "status/menu.h"

class QHelpEvent;

namespace varnhold {

class MenuStyle;

// The status item's menu: rows of plain data as a menu that closes and deletes itself.
//
// Each opening makes a new one from the rows of that moment, so a poll can't pull an open menu from
// under the pointer. The keys beside the titles work while the menu is open and at no other time.
class StatusMenu final : public QMenu {
    Q_OBJECT
public:
    using Choose = std::function<void(MenuAction action, const std::string& value)>;

    StatusMenu(const std::vector<MenuRow>& rows, Choose choose, QWidget* parent = nullptr);

    // Opens it beside the anchor and within the area, both on the screen. It is never wider than
    // half the area, and scrolls where it would be higher than the room beside the anchor.
    void popupBeside(const QRect& anchor, const QRect& area);

    [[nodiscard]] QSize sizeHint() const override;

signals:
    // A press beside the menu closes it; whoever is pressed there hears of the same press next.
    void pressedOutside();

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void append(const MenuRow& row);

    void showWhole(const QHelpEvent& asked);

    Choose choose_;
    MenuStyle* style_; // a child
    QRect wanted_;     // while it opens
    std::vector<std::pair<QKeySequence, QAction*>> keys_;
};

// The key of a row as the desktop writes it; empty for none.
[[nodiscard]] QKeySequence menuKey(const MenuRow& row);

} // namespace varnhold
