#pragma once

#include <functional>
#include <string>
#include <vector>

#include "records/groups.h"

namespace varnhold {

// The group with this identity; null if it has gone.
[[nodiscard]] CustomBotGroup* findGroup(std::vector<CustomBotGroup>& groups, const Uuid& id);

// The sheet in which groups are made, named and deleted. Every change is saved at once, and none
// can fail; a group that has gone is passed over. Main thread; list and text must outlive it.
struct ManageCustomGroupsSheet {
    std::vector<CustomBotGroup>& customGroups;
    std::string& newGroupNameInput;
    std::function<void()> onSave;
    std::function<void()> onDismiss;
    std::function<void()> onChange = [] {}; // something to see, nothing to save

    void setNewGroupName(const std::string& text) const;
    // A name of blanks alone is none.
    [[nodiscard]] bool canAddGroup() const;
    // Makes an empty group of that name, without blanks around it; two may have the same.
    void addGroup() const;

    void rename(const Uuid& id, const std::string& name) const;
    // Bots and models stay.
    void remove(const Uuid& id) const;
};

} // namespace varnhold
