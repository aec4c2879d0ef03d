#include "doctor/words.h"

#include <array>

#include "base/dates.h"

namespace varnhold::doctor {

std::string sizeInWords(std::uint64_t bytes) {
    constexpr std::array<const char*, 5> units{"B", "KB", "MB", "GB", "TB"};
    constexpr std::uint64_t thousand = 1000;
    std::size_t unit = 0;
    std::uint64_t tenths = bytes * 10;
    while (tenths / 10 >= thousand && unit + 1 < units.size()) {
        tenths /= thousand;
        ++unit;
    }
    std::string number = std::to_string(tenths / 10);
    if (unit > 0 && number.size() == 1) {
        number += "." + std::to_string(tenths % 10);
    }
    return number + " " + units.at(unit);
}

std::string durationInWords(std::chrono::seconds duration) {
    using namespace std::chrono_literals;
    if (duration < 2min) {
        return std::to_string(duration.count()) + " s";
    }
    if (duration < 2h) {
        return std::to_string(duration / 1min) + " min";
    }
    return duration < 48h ? std::to_string(duration / 1h) + " h"
                          : std::to_string(duration / 24h) + " d";
}

std::string dayOf(std::chrono::system_clock::time_point moment) {
    constexpr std::size_t length = 10; // YYYY-MM-DD
    return dates::iso8601(moment).substr(0, length);
}

std::string shellQuoted(std::string_view text) {
    constexpr std::string_view harmless = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                          "0123456789_-./:@%+=,";
    if (!text.empty() && text.find_first_not_of(harmless) == std::string_view::npos) {
        return std::string(text);
    }
    std::string out = "'";
    for (const char c : text) {
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return out + "'";
}

std::string fileName(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace varnhold::doctor
