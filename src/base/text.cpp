#include "base/text.h"

#include <charconv>
#include <system_error>

namespace varnhold::text {

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find(separator, start);
        if (end == std::string_view::npos) {
            pieces.push_back(text.substr(start));
            return pieces;
        }
        pieces.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

std::vector<std::string_view> columns(std::string_view line) {
    std::vector<std::string_view> pieces;
    std::size_t start = line.find_first_not_of(" \t");
    while (start != std::string_view::npos) {
        const std::size_t end = line.find_first_of(" \t", start);
        pieces.push_back(line.substr(start, end - start));
        start = line.find_first_not_of(" \t", end);
    }
    return pieces;
}

std::string_view trim(std::string_view text, std::string_view set) {
    const std::size_t first = text.find_first_not_of(set);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(set) - first + 1);
}

std::string beginning(std::string_view text, std::size_t most) {
    if (text.size() <= most) {
        return std::string(text);
    }
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
        --end; // it would cut a letter
    }
    return std::string(text.substr(0, end)) + "…";
}

std::size_t countOccurrences(std::string_view text, std::string_view needle) {
    std::size_t count = 0;
    for (std::size_t at = text.find(needle); at != std::string_view::npos;
         at = text.find(needle, at + needle.size())) {
        ++count;
    }
    return count;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
    // from_chars knows no plus sign, and "+-5" must not slip through by dropping one.
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::uint64_t> parseUnsigned(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

} // namespace varnhold::text
