#include "settings/groups_wiring.h"

namespace varnhold {

void openManageCustomGroups(ModelSelectorView& view) {
    view.showManageGroupsSheet = true;
    view.changed();
}

CustomGroupsColumn ModelSelectorView::groupsColumn() {
    return CustomGroupsColumn({.queues = platform_.queues,
                               .contextLadder = constants_.contextLadder,
                               .customGroups = customGroups,
                               .modelLibrary = allLibraryModels,
                               .userBots = userBots,
                               .onSave = [this] { save(); },
                               .onClearDragging = [this] { endDrag(); },
                               .onChange = [this] { changed(); }});
}

ManageCustomGroupsSheet ModelSelectorView::groupsSheet() {
    return {.customGroups = customGroups,
            .newGroupNameInput = newGroupNameInput,
            .onSave = [this] { save(); },
            .onDismiss =
                [this] {
                    showManageGroupsSheet = false;
                    changed();
                },
            .onChange = [this] { changed(); }};
}

} // namespace varnhold
