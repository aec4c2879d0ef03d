#include "status/menu_groups.h"

#include "records/groups.h"

namespace varnhold {

std::vector<MenuGroup> loadMenuGroups(const Constants& constants) {
    std::vector<MenuGroup> groups;
    for (const CustomBotGroup& group : valueOrEmpty(readGroups(constants.customGroupsFile))) {
        MenuGroup shown{.name = group.name, .models = {}};
        for (const AIModelItem& model : group.models) {
            shown.models.push_back(model.displayName());
        }
        groups.push_back(std::move(shown));
    }
    return groups;
}

} // namespace varnhold
