#include "views/settings/focus_item.h"

#include <QQuickWindow>

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
    // The window counts it as the one in focus until this event is over.
    QMetaObject::invokeMethod(this, &FocusItem::applyTabStop, Qt::QueuedConnection);
}

void FocusItem::setTabStop(bool stop) {
    if (tabStop_ != stop) {
        tabStop_ = stop;
        applyTabStop();
        emit tabStopChanged();
    }
}

void FocusItem::applyTabStop() {
    if (tabStop_ || window() == nullptr || window()->activeFocusItem() != this) {
        setActiveFocusOnTab(tabStop_);
    }
}

void FocusItem::setVisualFocus(bool visual) {
    if (visualFocus_ != visual) {
        visualFocus_ = visual;
        emit visualFocusChanged();
    }
}

} // namespace varnhold
