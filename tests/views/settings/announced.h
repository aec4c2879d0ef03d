#pragma once

#include <QAccessible>
#include <QQuickItem>

// What a screen reader finds of items.
namespace varnhold::testing {

inline QString spoken(QQuickItem* item, QAccessible::Text kind) {
    return QAccessible::queryAccessibleInterface(item)->text(kind);
}

inline QAccessible::Role roleOf(QQuickItem* item) {
    return QAccessible::queryAccessibleInterface(item)->role();
}

// The first item, from the front, that a screen reader finds to be so; null if there is none. The
// test is a function of a QAccessibleInterface.
template <typename Test>
QQuickItem* firstAnnounced(QQuickItem* under, const Test& test) {
    if (!under->isVisible()) {
        return nullptr;
    }
    if (const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(under);
        spoken != nullptr && test(*spoken)) {
        return under;
    }
    for (QQuickItem* child : under->childItems()) {
        if (QQuickItem* found = firstAnnounced(child, test)) {
            return found;
        }
    }
    return nullptr;
}

inline QQuickItem* announced(QQuickItem* under, const QString& name) {
    return firstAnnounced(under, [&](const QAccessibleInterface& spoken) {
        return spoken.text(QAccessible::Name) == name;
    });
}

inline QQuickItem* announced(QQuickItem* under, const QString& name, QAccessible::Role role) {
    return firstAnnounced(under, [&](const QAccessibleInterface& spoken) {
        return spoken.role() == role && spoken.text(QAccessible::Name) == name;
    });
}

// Where the item's middle is in its window.
inline QPoint middleOf(const QQuickItem* item) {
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

// How many stand under it in that role.
inline int countOf(const QAccessibleInterface* under, QAccessible::Role role) {
    int count = under->role() == role ? 1 : 0;
    for (int i = 0; i < under->childCount(); ++i) {
        count += countOf(under->child(i), role);
    }
    return count;
}

inline int countOf(QQuickItem* under, QAccessible::Role role) {
    return countOf(QAccessible::queryAccessibleInterface(under), role);
}

} // namespace varnhold::testing
