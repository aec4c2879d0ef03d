#include "stacks/row_drop_delegate.h"

namespace varnhold {

bool RealTimeDropDelegate::performDrop() const {
    const bool belongsHere = draggingItem && rowOf(list, draggingItem->uid());
    draggingItem.reset();
    onChange();
    if (belongsHere) {
        onSave();
    }
    return belongsHere;
}

void RealTimeDropDelegate::dropEntered() const {
    const auto move = draggingItem ? moveOnto(list, draggingItem->uid(), item.uid()) : std::nullopt;
    if (move) {
        apply(*move, list);
        onChange();
    }
}

} // namespace varnhold
