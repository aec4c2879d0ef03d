#include "views/settings/dragging/drop_target.h"

#include "views/settings/dragging/edge_scroll.h"

namespace varnhold {

void DropTarget::mark(int stop) {
    if (marked_ != stop) {
        marked_ = stop;
        emit markedChanged();
    }
}

void DropTarget::itemChange(ItemChange change, const ItemChangeData& value) {
    if (change == ItemSceneChange && value.window != nullptr) {
        EdgeScroll::serve(value.window);
    }
    QQuickItem::itemChange(change, value);
}

} // namespace varnhold
