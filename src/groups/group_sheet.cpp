#include "groups/group_sheet.h"

#include <algorithm>

#include "base/unicode.h"

namespace varnhold {

CustomBotGroup* findGroup(std::vector<CustomBotGroup>& groups, const Uuid& id) {
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&](const CustomBotGroup& group) { return group.id == id; });
    return found == groups.end() ? nullptr : &*found;
}

void ManageCustomGroupsSheet::setNewGroupName(const std::string& text) const {
    newGroupNameInput = text;
    onChange();
}

bool ManageCustomGroupsSheet::canAddGroup() const {
    return !unicode::trimmedOfBlanks(newGroupNameInput).empty();
}

void ManageCustomGroupsSheet::addGroup() const {
    if (!canAddGroup()) {
        return;
    }
    customGroups.push_back({.name = std::string(unicode::trimmedOfBlanks(newGroupNameInput))});
    onSave();
    setNewGroupName("");
}

void ManageCustomGroupsSheet::rename(const Uuid& id, const std::string& name) const {
    CustomBotGroup* const group = findGroup(customGroups, id);
    if (group != nullptr && group->name != name) {
        group->name = name;
        onSave();
    }
}

void ManageCustomGroupsSheet::remove(const Uuid& id) const {
    // The identity handed in may be the group's own.
    std::erase_if(customGroups, [id = id](const CustomBotGroup& group) { return group.id == id; });
    onSave();
}

} // namespace varnhold
