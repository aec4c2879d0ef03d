#pragma once

#include <string>
#include <string_view>

// What needs knowledge of Unicode: validity, case, characters as people count them, order.
//
// Case mapping is the full, locale-free one of the Unicode tables ("ß" in capitals is "SS"), so a
// name maps to the same variable on every machine. Text that isn't valid UTF-8 comes back as it is.
// Pure functions, safe on any thread.
namespace varnhold::unicode {

// Strict: no overlong form, no surrogate, no sequence cut at either end.
[[nodiscard]] bool isValidUtf8(std::string_view text);

// Text with each malformed byte replaced by U+FFFD.
[[nodiscard]] std::string repaired(std::string_view text);

[[nodiscard]] std::string toUpper(std::string_view text);
[[nodiscard]] std::string toLower(std::string_view text);

// Each word with a capital first letter and the rest small; digits and signs other than apostrophes
// start a new word, so "mlx-local" gives "Mlx-Local" and "don't" gives "Don't".
[[nodiscard]] std::string capitalized(std::string_view text);

// Text without blanks and line breaks at its two ends: what Unicode counts as such, and the
// zero-width space.
[[nodiscard]] std::string_view trimmed(std::string_view text);

// The same, but a line break stays: a name of line breaks alone is a name.
[[nodiscard]] std::string_view trimmedOfBlanks(std::string_view text);

// At most `count` characters as a person counts them (grapheme clusters): a flag or a joined emoji
// is one.
[[nodiscard]] std::string firstCharacters(std::string_view text, std::size_t count);

// Plain text order: canonically composed code points, not a language's collation, so a capital
// comes before a small letter and the order is the same for every user.
[[nodiscard]] bool precedes(std::string_view left, std::string_view right);

} // namespace varnhold::unicode
