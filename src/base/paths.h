#pragma once

#include <string>
#include <string_view>

// Pieces of paths, taken as plain text: nothing here asks the file system but standardized().
namespace varnhold::paths {

// "a/b/" gives "b", "/" gives "/", "" gives "".
[[nodiscard]] std::string_view lastComponent(std::string_view path);

// Text after the last dot of the last component, without the dot; empty for ".md", "a.", "..md" and
// where the extension holds a blank.
[[nodiscard]] std::string_view extension(std::string_view path);

// Path without "//", "." and "..". If something exists there, links are resolved first, so that
// ".." leaves the folder that is meant; otherwise the text alone decides. No trailing slash.
[[nodiscard]] std::string standardized(const std::string& path);

} // namespace varnhold::paths
