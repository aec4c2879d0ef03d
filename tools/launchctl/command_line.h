#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/result.h"
#include "jobs/label_name.h"

// What the user of launchctl asks for, told from its arguments alone.
namespace varnhold::services {

struct Help {};
struct Version {};
struct List {};
struct ListJob {
    Label label;
};
struct Bootstrap {
    std::uint64_t userId = 0;
    std::vector<std::string> paths;
};
struct Bootout {
    std::uint64_t userId = 0;
    Label label;
};
struct Kickstart {
    std::uint64_t userId = 0;
    Label label;
    bool kill = false;
};
struct Stop {
    Label label;
};

using Command = std::variant<Help, Version, List, ListJob, Bootstrap, Bootout, Kickstart, Stop>;

// `arguments` without the program's name. The reason says in one line what is wrong with them.
[[nodiscard]] Result<Command> parseCommandLine(const std::vector<std::string>& arguments);

[[nodiscard]] std::string helpText();

} // namespace varnhold::services
