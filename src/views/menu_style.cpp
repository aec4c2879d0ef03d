#include "views/menu_style.h"

#include <QAction>
#include <QMenu>
#include <QStyleOptionMenuItem>

namespace varnhold {

namespace {

// Readable as text on the menu's own background, light or dark.
QColor alertColour(const QPalette& palette) {
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    return dark ? QColor(0xff, 0x69, 0x61) : QColor(0xc6, 0x21, 0x1a);
}

} // namespace

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    const auto* menu = qobject_cast<const QMenu*>(widget);
    const QAction* action =
        row != nullptr && menu != nullptr ? menu->actionAt(row->rect.center()) : nullptr;
    if (element != CE_MenuItem || action == nullptr || !action->property(alertProperty).toBool()) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    QStyleOptionMenuItem red(*row);
    for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
        red.palette.setColor(role, alertColour(row->palette));
    }
    QProxyStyle::drawControl(element, &red, painter, widget);
}

} // namespace varnhold
