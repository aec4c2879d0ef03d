#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

// Figures as people read them. Pure functions; any thread.
namespace varnhold::doctor {

// "512 B", "1.2 KB", "64 MB": thousands, one decimal below ten.
[[nodiscard]] std::string sizeInWords(std::uint64_t bytes);

// "12 s", "28 min", "5 h", "3 d".
[[nodiscard]] std::string durationInWords(std::chrono::seconds duration);

// "2026-03-04" in UTC.
[[nodiscard]] std::string dayOf(std::chrono::system_clock::time_point moment);

// As one word of a shell's command line.
[[nodiscard]] std::string shellQuoted(std::string_view text);

// The path behind its last slash.
[[nodiscard]] std::string fileName(const std::string& path);

} // namespace varnhold::doctor
