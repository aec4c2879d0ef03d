#pragma once

#include <map>
#include <string>
#include <string_view>

namespace varnhold::doctor {

// The supervisor's user defaults, read from their file without the toolkit that writes it: the
// values of its one section, by key. Values that aren't plain text come as they stand. Pure; any
// thread.
[[nodiscard]] std::map<std::string, std::string> parseStoredDefaults(std::string_view content);

// Where the file is.
[[nodiscard]] std::string storedDefaultsPath(const std::string& home);

} // namespace varnhold::doctor
