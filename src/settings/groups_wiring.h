#pragma once

#include "groups/custom_groups_column.h"
#include "groups/group_sheet.h"
#include "settings/settings_state.h"

// Custom groups in the settings window. groupsColumn() and groupsSheet() of the record make what
// edits them, on the record's own lists; it must outlive both.
namespace varnhold {

// What choosing "Custom Groups" in the menu does to the window: shows the sheet that makes, names
// and deletes groups. Main thread.
void openManageCustomGroups(ModelSelectorView& view);

} // namespace varnhold
