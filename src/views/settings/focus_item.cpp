#include "views/settings/focus_item.h"

namespace varnhold {

FocusItem::FocusItem(QQuickItem* parent) : QQuickItem(parent) {
    setActiveFocusOnTab(true);
}

void FocusItem::focusInEvent(QFocusEvent* event) {
    QQuickItem::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    setVisualFocus(reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                   reason == Qt::ShortcutFocusReason);
}

void FocusItem::focusOutEvent(QFocusEvent* event) {
    QQuickItem::focusOutEvent(event);
    setVisualFocus(false);
}

void FocusItem::setVisualFocus(bool visual) {
    if (visualFocus_ != visual) {
        visualFocus_ = visual;
        emit visualFocusChanged();
    }
}

} // namespace varnhold
