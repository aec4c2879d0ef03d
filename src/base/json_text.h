#pragma once

#include <string>
#include <string_view>
#include <vector>

// Documents as they are written, for what belongs to others and has to go through untouched: as
// values, numbers beyond 64 bits would come out rounded, and escapes as other ones.
//
// For texts that json::parse() takes. Pure functions; any thread.
namespace varnhold::json {

// Both as they stand in the text, the key with its quotation marks.
struct TextMember {
    std::string_view key;
    std::string_view value;
};

// The members of an object in their order. They point into the text.
[[nodiscard]] std::vector<TextMember> textMembers(std::string_view object);

// A value spread over lines, two blanks per level, for a line that stands at `level` itself.
[[nodiscard]] std::string spread(std::string_view value, int level);

} // namespace varnhold::json
