#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Plain text helpers over bytes and ASCII: splitting, trimming, strict number parsing.
//
// All text in the program is UTF-8 in std::string. The functions here are pure, free of the
// process locale and safe on any thread. What needs knowledge of Unicode is in unicode.h.
namespace varnhold::text {

// Pieces between separators. n separators give n + 1 pieces, empty ones included.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

// Pieces between blanks and tabs, empty ones dropped: the columns of a listing.
[[nodiscard]] std::vector<std::string_view> columns(std::string_view line);

// Text without any of the characters in `set` (ASCII) at its two ends.
[[nodiscard]] std::string_view trim(std::string_view text, std::string_view set);

// At most `most` bytes of it, up to the end of a letter (UTF-8), and then "…" for the rest.
[[nodiscard]] std::string beginning(std::string_view text, std::size_t most);

// Non-overlapping occurrences of a non-empty `needle`, counted from the left.
[[nodiscard]] std::size_t countOccurrences(std::string_view text, std::string_view needle);

// An optional sign and ASCII digits, nothing else, within 64 bits. No blanks, no other digits.
[[nodiscard]] std::optional<std::int64_t> parseInteger(std::string_view text);

// ASCII digits only, for ids in command arguments and file names; no sign.
[[nodiscard]] std::optional<std::uint64_t> parseUnsigned(std::string_view text);

} // namespace varnhold::text
