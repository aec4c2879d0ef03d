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

// The first item, from the front, that is announced under this name in this role; null if there is
// none.
inline QQuickItem* announced(QQuickItem* under, const QString& name, QAccessible::Role role) {
    if (!under->isVisible()) {
        return nullptr;
    }
    if (const auto* accessible = QAccessible::queryAccessibleInterface(under);
        accessible != nullptr && accessible->role() == role &&
        accessible->text(QAccessible::Name) == name) {
        return under;
    }
    for (QQuickItem* child : under->childItems()) {
        if (QQuickItem* found = announced(child, name, role)) {
            return found;
        }
    }
    return nullptr;
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
