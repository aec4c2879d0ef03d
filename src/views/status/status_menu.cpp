#include "views/status/status_menu.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "views/desktop/colours.h"
#include "views/status/menu_style.h"
#include "views/text/qt_text.h"

namespace varnhold {

QKeySequence menuKey(const MenuRow& row) {
    return row.key.empty() ? QKeySequence()
                           : QKeySequence(QStringLiteral("Ctrl+") + toQString(row.key).toUpper());
}

StatusMenu::StatusMenu(const std::vector<MenuRow>& rows, Choose choose, QWidget* parent)
    : QMenu(parent), choose_(std::move(choose)) {
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowFlag(Qt::FramelessWindowHint);
    setAccessibleName(QStringLiteral("Varnhold"));
    setWindowTitle(QStringLiteral("Varnhold menu")); // where desktops list windows, and for tests
    auto* style = new MenuStyle;
    style->setParent(this);
    setStyle(style);
    for (const MenuRow& row : rows) {
        append(row);
    }
}

void StatusMenu::append(const MenuRow& row) {
    if (row.kind == MenuRow::Kind::separator) {
        addSeparator();
        return;
    }
    QString text = menuText(row.title);
    const QKeySequence key = menuKey(row);
    if (!key.isEmpty()) {
        text += QLatin1Char('\t') + key.toString(QKeySequence::NativeText);
    }
    QAction* action = addAction(text);
    action->setEnabled(row.kind == MenuRow::Kind::item);
    action->setProperty(MenuStyle::alertProperty, row.red);
    if (!key.isEmpty()) {
        keys_.emplace_back(key, action);
    }
    connect(action, &QAction::triggered, this,
            [this, chosen = row.action, value = row.value] { choose_(chosen, value); });
}

void StatusMenu::resizeEvent(QResizeEvent* event) {
    QMenu::resizeEvent(event);
    roundCorners(*this, menuRadius);
}

void StatusMenu::mousePressEvent(QMouseEvent* event) {
    if (!rect().contains(event->position().toPoint())) {
        emit pressedOutside();
    }
    QMenu::mousePressEvent(event);
}

void StatusMenu::keyPressEvent(QKeyEvent* event) {
    const QKeySequence pressed(event->keyCombination());
    const auto found = std::find_if(keys_.begin(), keys_.end(),
                                    [&](const auto& each) { return each.first == pressed; });
    if (found == keys_.end()) {
        QMenu::keyPressEvent(event);
        return;
    }
    found->second->trigger();
    close();
}

} // namespace varnhold
