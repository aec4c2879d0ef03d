#include "views/settings/dragging/drop_target.h"

namespace varnhold {

namespace {

QList<DropTarget*>& targets() {
    static QList<DropTarget*> alive;
    return alive;
}

} // namespace

DropTarget::DropTarget(QQuickItem* parent) : QQuickItem(parent) {
    targets().append(this);
}

DropTarget::~DropTarget() {
    targets().removeOne(this);
}

void DropTarget::mark(int stop) {
    if (marked_ != stop) {
        marked_ = stop;
        emit markedChanged();
    }
}

const QList<DropTarget*>& DropTarget::all() {
    return targets();
}

} // namespace varnhold
