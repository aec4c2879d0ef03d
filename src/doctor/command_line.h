#pragma once

#include <string>
#include <vector>

#include "base/result.h"

// What the user of varnhold-doctor asks for, told from its arguments alone.
namespace varnhold::doctor {

inline constexpr int exitWrongUse = 64;

struct Command {
    enum class Kind { help, version, examine, watch };

    Kind kind = Kind::examine;
    bool json = false;
    bool color = true;               // where the terminal has any
    std::string data;                // another data folder; empty for the home's own
    std::string without;             // a provider; empty if nobody asked
    std::vector<std::string> checks; // in their order of showing
};

// The checks that there are, in their order.
[[nodiscard]] const std::vector<std::string>& allChecks();

// `arguments` without the program's name. The reason says in one line what is wrong with them.
[[nodiscard]] Result<Command> parseCommandLine(const std::vector<std::string>& arguments);

[[nodiscard]] std::string helpText();

} // namespace varnhold::doctor
