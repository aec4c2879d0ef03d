#pragma once

#include <string>
#include <vector>

#include "shell/constants.h"

namespace varnhold {

// A custom group's name and its models' names, in failover order.
struct MenuGroup {
    std::string name;
    std::vector<std::string> models;
};

// Groups of the file in its order, with what their bots will use. Empty on any failure.
[[nodiscard]] std::vector<MenuGroup> loadMenuGroups(const Constants& constants);

} // namespace varnhold
