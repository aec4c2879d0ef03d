#include "base/json_text.h"

#include <algorithm>

namespace varnhold::json {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::size_t afterBlanks(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of(blanks, at), text.size());
}

std::size_t afterString(std::string_view text, std::size_t at) {
    for (++at; at < text.size() && text[at] != '"'; ++at) {
        at += text[at] == '\\' ? 1U : 0U;
    }
    return std::min(at + 1, text.size());
}

// A string, a sign, or a word or number up to the next sign.
std::size_t afterToken(std::string_view text, std::size_t at) {
    if (text[at] == '"') {
        return afterString(text, at);
    }
    constexpr std::string_view signs = "{}[],:";
    if (signs.find(text[at]) != std::string_view::npos) {
        return at + 1;
    }
    return std::min(text.find_first_of(" \t\r\n{}[],:\"", at), text.size());
}

bool opens(char sign) {
    return sign == '{' || sign == '[';
}

bool closes(char sign) {
    return sign == '}' || sign == ']';
}

std::size_t afterValue(std::string_view text, std::size_t at) {
    int depth = 0;
    while (at < text.size()) {
        depth += opens(text[at]) ? 1 : closes(text[at]) ? -1 : 0;
        at = afterToken(text, at);
        if (depth == 0) {
            return at;
        }
        at = afterBlanks(text, at);
    }
    return at;
}

std::string newLine(int level) {
    constexpr std::size_t indentation = 2;
    return "\n" + std::string(indentation * static_cast<std::size_t>(level), ' ');
}

} // namespace

std::vector<TextMember> textMembers(std::string_view object) {
    std::vector<TextMember> members;
    // What may stand before the brace is a mark of the encoding.
    std::size_t at = afterBlanks(object, std::min(object.find('{'), object.size()) + 1);
    while (at < object.size() && object[at] == '"') {
        const std::size_t keyEnd = afterString(object, at);
        const std::size_t colon = afterBlanks(object, keyEnd);
        const std::size_t value = afterBlanks(object, colon + 1);
        const std::size_t valueEnd = afterValue(object, value);
        members.push_back({object.substr(at, keyEnd - at), object.substr(value, valueEnd - value)});
        at = afterBlanks(object, afterBlanks(object, valueEnd) + 1); // past the comma
    }
    return members;
}

std::string spread(std::string_view value, int level) {
    std::string out;
    for (std::size_t at = afterBlanks(value, 0); at < value.size();) {
        const std::size_t end = afterToken(value, at);
        const char sign = value[at];
        const std::size_t next = afterBlanks(value, end);
        if (closes(sign) && !opens(out.back())) {
            out += newLine(--level);
        }
        out += value.substr(at, end - at);
        if (opens(sign) && next < value.size() && !closes(value[next])) {
            out += newLine(++level);
        } else if (sign == ',') {
            out += newLine(level);
        } else if (sign == ':') {
            out += ' ';
        }
        at = next;
    }
    return out;
}

} // namespace varnhold::json
