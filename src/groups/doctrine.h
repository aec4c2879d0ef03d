#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Which of the files attached to a custom group are its doctrine: short texts that tell its bots
// how to behave.
//
// Names and sizes decide; contents are never read. What can't be looked at reads as "no". Any
// thread; a walk takes as long as the attached folders are large.
namespace varnhold::Doctrine {

inline constexpr std::uint64_t maxBytes = 40000; // the largest that still qualifies
inline constexpr std::array<std::string_view, 4> textExts{"md", "markdown", "txt", "mdx"};

// A text file by its extension, small enough, whose name speaks of doctrine. A path with nothing at
// it qualifies by its name alone; one that isn't UTF-8 doesn't, since no settings file can name it.
[[nodiscard]] bool isDoctrineFile(const std::string& path);

// Those of `paths` that qualify, as given, and those in attached folders and their direct
// subfolders, each once, in order of first appearance.
[[nodiscard]] std::vector<std::string> extract(const std::vector<std::string>& paths);

} // namespace varnhold::Doctrine
