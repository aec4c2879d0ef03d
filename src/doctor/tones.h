#pragma once

#include <cstddef>
#include <string>

// What marks a line of a terminal: a sign, and a tone on top of it. Pure functions; any thread.
namespace varnhold::doctor {

enum class Tone { plain, bold, dim, red, yellow, blue, green };

// A sign tells as much without its tone.
struct Sign {
    const char* text;
    Tone tone;
};

inline constexpr std::size_t columnGap = 2; // between columns of a table

// As it is without `colour`.
[[nodiscard]] std::string toned(Tone tone, const std::string& text, bool color);

} // namespace varnhold::doctor
