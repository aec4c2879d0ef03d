#pragma once

#include <QQuickItem>

// What a model's row shows of the model, and how it comes back after a drag.
namespace varnhold::testing {

inline QQuickItem* blockOf(const QQuickItem* row) {
    for (QQuickItem* child : row->childItems()) {
        if (child->inherits("QQuickItem") && child->property("ground").isValid()) {
            return child;
        }
    }
    return nullptr;
}

// Milliseconds; 0 if it doesn't take its time at all.
inline int fadeOf(const QQuickItem* block) {
    for (const QObject* each : block->children()) {
        if (each->inherits("QQuickBehavior") && each->property("enabled").toBool()) {
            return each->property("animation").value<QObject*>()->property("duration").toInt();
        }
    }
    return 0;
}

} // namespace varnhold::testing
