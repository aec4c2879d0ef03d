#pragma once

#include <string>

#include "platform/platform.h"

// Whether a local model is on this machine, and fetching it if it isn't: what is asked of a shell.
//
// Pure; any thread. The model's id stands in the texts as it is: the check takes it for a pattern,
// the fetching for words of the command line.
namespace varnhold {

[[nodiscard]] platform::ProcessRequest ollamaCheckRequest(const std::string& id);
[[nodiscard]] platform::ProcessRequest ollamaPullRequest(const std::string& id);

// Output that is no text counts as none.
[[nodiscard]] bool isListed(const platform::ProcessResult& check);

} // namespace varnhold
