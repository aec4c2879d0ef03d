#include "doctor/stored_defaults.h"

#include "base/text.h"

namespace varnhold::doctor {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char low = static_cast<char>(c | 0x20);
    return low >= 'a' && low <= 'f' ? low - 'a' + 10 : -1;
}

void appendUtf8(std::string& out, unsigned code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0U | (code >> 6U));
        out += static_cast<char>(0x80U | (code & 0x3FU));
    } else {
        out += static_cast<char>(0xE0U | (code >> 12U));
        out += static_cast<char>(0x80U | ((code >> 6U) & 0x3FU));
        out += static_cast<char>(0x80U | (code & 0x3FU));
    }
}

// A backslash says "\n", "\"" or, with as many hex digits as follow, "\x2022".
std::size_t appendEscape(std::string& out, std::string_view raw, std::size_t at) {
    const char sign = raw[at];
    constexpr std::string_view names = "abfnrtv0";
    constexpr std::string_view meant("\a\b\f\n\r\t\v\0", 8);
    if (sign == 'x') {
        unsigned code = 0;
        std::size_t end = at + 1;
        for (; end < raw.size() && hexDigit(raw[end]) >= 0; ++end) {
            code = (code * 16 + static_cast<unsigned>(hexDigit(raw[end]))) & 0xFFFFU;
        }
        appendUtf8(out, code);
        return end - at;
    }
    const std::size_t known = names.find(sign);
    out += known == std::string_view::npos ? sign : meant[known];
    return 1;
}

std::string valueOf(std::string_view raw) {
    std::string out;
    for (std::size_t at = 0; at < raw.size();) {
        if (raw[at] == '"') {
            ++at;
        } else if (raw[at] == '\\' && at + 1 < raw.size()) {
            at += 1 + appendEscape(out, raw, at + 1);
        } else {
            out += raw[at++];
        }
    }
    return out.starts_with("@@") ? out.substr(1) : out; // a sign that is doubled stands for itself
}

} // namespace

std::map<std::string, std::string> parseStoredDefaults(std::string_view content) {
    std::map<std::string, std::string> values;
    bool isGeneral = false;
    for (const std::string_view line : text::split(content, '\n')) {
        const std::string_view entry = text::trim(line, " \t\r");
        if (entry.starts_with('[')) {
            isGeneral = entry == "[General]";
        }
        const std::size_t sign = entry.find('=');
        if (isGeneral && sign != std::string_view::npos) {
            values[std::string(text::trim(entry.substr(0, sign), " "))] =
                valueOf(text::trim(entry.substr(sign + 1), " "));
        }
    }
    return values;
}

std::string storedDefaultsPath(const std::string& home) {
    return home + "/.config/OstrelleAI/Varnhold.conf";
}

} // namespace varnhold::doctor
