#pragma once

#include <string>
#include <string_view>
#include <vector>

// Texts in the columns of a terminal. Pure functions; any thread.
namespace varnhold::doctor {

// Text that does nothing to a terminal: control characters, and those that turn the direction of
// writing, come as a mark. Bytes that aren't UTF-8 too.
[[nodiscard]] std::string printable(std::string_view text);

// How many columns the text takes. An emoji takes two, however many code points it is made of.
[[nodiscard]] std::size_t columnsOf(std::string_view text);

// The text in exactly so many columns: filled up with blanks, or cut with a mark of omission.
[[nodiscard]] std::string fitted(std::string_view text, std::size_t columns);

// Lines of at most so many columns, broken at blanks; a longer word stands alone on its line.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, std::size_t columns);

} // namespace varnhold::doctor
