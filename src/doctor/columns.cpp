#include "doctor/columns.h"

#include <algorithm>
#include <utf8proc.h>

#include "base/text.h"
#include "base/unicode.h"

namespace varnhold::doctor {

namespace {

constexpr utf8proc_int32_t emojiStyle = 0xFE0F;

// A character as a person counts them.
struct Cluster {
    std::string_view text;
    std::size_t columns = 0;
};

utf8proc_int32_t codePointAt(std::string_view text, std::size_t at, std::size_t& length) {
    utf8proc_int32_t point = -1;
    const utf8proc_ssize_t read =
        utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data() + at),
                         static_cast<utf8proc_ssize_t>(text.size() - at), &point);
    length = read > 0 ? static_cast<std::size_t>(read) : 1;
    return read > 0 ? point : 0xFFFD;
}

Cluster clusterAt(std::string_view text, std::size_t at) {
    Cluster cluster;
    utf8proc_int32_t state = 0;
    utf8proc_int32_t previous = -1;
    std::size_t end = at;
    while (end < text.size()) {
        std::size_t length = 0;
        const utf8proc_int32_t point = codePointAt(text, end, length);
        if (previous >= 0 && utf8proc_grapheme_break_stateful(previous, point, &state)) {
            break;
        }
        const auto width = static_cast<std::size_t>(utf8proc_charwidth(point));
        cluster.columns = std::max(cluster.columns, point == emojiStyle ? 2 : width);
        previous = point;
        end += length;
    }
    cluster.text = text.substr(at, end - at);
    return cluster;
}

bool isHarmful(utf8proc_int32_t point) {
    const bool turnsDirection = (point >= 0x202A && point <= 0x202E) ||
                                (point >= 0x2066 && point <= 0x2069) || point == 0x200E ||
                                point == 0x200F || point == 0x061C;
    const bool breaksLines = point == 0x2028 || point == 0x2029;
    return utf8proc_category(point) == UTF8PROC_CATEGORY_CC || turnsDirection || breaksLines;
}

} // namespace

std::string printable(std::string_view text) {
    const std::string valid = unicode::repaired(text);
    std::string out;
    for (std::size_t at = 0; at < valid.size();) {
        std::size_t length = 0;
        const utf8proc_int32_t point = codePointAt(valid, at, length);
        out += isHarmful(point) ? point == '\t' ? " " : "␦" : valid.substr(at, length);
        at += length;
    }
    return out;
}

std::size_t columnsOf(std::string_view text) {
    std::size_t columns = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Cluster cluster = clusterAt(text, at);
        columns += cluster.columns;
        at += cluster.text.size();
    }
    return columns;
}

std::string fitted(std::string_view text, std::size_t columns) {
    const bool isCut = columnsOf(text) > columns;
    const std::size_t room = isCut && columns > 0 ? columns - 1 : columns;
    std::string out;
    std::size_t used = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Cluster cluster = clusterAt(text, at);
        if (used + cluster.columns > room) {
            break;
        }
        out += cluster.text;
        used += cluster.columns;
        at += cluster.text.size();
    }
    if (isCut && columns > 0) {
        out += "…";
        ++used;
    }
    return out + std::string(columns - used, ' ');
}

std::vector<std::string> wrapped(std::string_view text, std::size_t columns) {
    std::vector<std::string> lines;
    std::string line;
    std::size_t used = 0;
    for (const std::string_view word : text::split(text, ' ')) {
        const std::size_t width = columnsOf(word);
        if (!line.empty() && used + 1 + width > columns) {
            lines.push_back(std::move(line));
            line.clear();
            used = 0;
        }
        used += (line.empty() ? 0 : 1) + width;
        line += (line.empty() ? "" : " ") + std::string(word);
    }
    lines.push_back(std::move(line));
    return lines;
}

} // namespace varnhold::doctor
