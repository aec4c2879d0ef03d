#include "groups/group_drop_delegate.h"

#include "groups/group_sheet.h"
#include "records/model_rows.h"

namespace varnhold {

bool CustomGroupDropDelegate::performDrop() const {
    CustomBotGroup* const group = findGroup(customGroups, groupId);
    const bool isOurs =
        draggingModel && group != nullptr && rowOf(group->models, draggingModel->uid()).has_value();
    draggingModel.reset();
    onChange(ListMotion::none);
    if (isOurs) {
        onSave();
    }
    return isOurs;
}

void CustomGroupDropDelegate::dropEntered() const {
    CustomBotGroup* const group = findGroup(customGroups, groupId);
    if (!draggingModel || group == nullptr) {
        return;
    }
    if (const auto move = moveOnto(group->models, draggingModel->uid(), targetModel.uid())) {
        apply(*move, group->models);
        onChange(ListMotion::spring);
    }
}

} // namespace varnhold
