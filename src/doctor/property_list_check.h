#pragma once

#include <string>
#include <vector>

#include "lifecycle/property_list.h"

namespace varnhold::doctor {

// What tells one definition of an agent from a later one: "OPENAI_API_KEY has changed",
// "CLAUDE_OAUTH_TOKEN is new", "the interpreter is another". Names of variables only, never their
// values. Pure; any thread.
[[nodiscard]] std::vector<std::string> differences(const PropertyList& old,
                                                   const PropertyList& now);

// "a, b and c".
[[nodiscard]] std::string enumerated(const std::vector<std::string>& texts);

} // namespace varnhold::doctor
