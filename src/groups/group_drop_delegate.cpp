#include "groups/group_drop_delegate.h"

#include "groups/group_sheet.h"

namespace varnhold {

namespace {

RealTimeDropDelegate rowDrop(const CustomGroupDropDelegate& target, ModelRows& models) {
    return {.item = target.targetModel,
            .list = models,
            .draggingItem = target.draggingModel,
            .onSave = target.onSave,
            .onChange = target.onChange};
}

} // namespace

bool CustomGroupDropDelegate::performDrop() const {
    ModelRows none;
    CustomBotGroup* const group = findGroup(customGroups, groupId);
    return rowDrop(*this, group == nullptr ? none : group->models).performDrop();
}

void CustomGroupDropDelegate::dropEntered() const {
    if (CustomBotGroup* const group = findGroup(customGroups, groupId)) {
        rowDrop(*this, group->models).dropEntered();
    }
}

} // namespace varnhold
