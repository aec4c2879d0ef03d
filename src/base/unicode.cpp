#include "base/unicode.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utf8proc.h>
#include <vector>

namespace varnhold::unicode {

namespace {

using CodePoint = utf8proc_int32_t;

constexpr CodePoint capitalIWithDot = 0x0130;
constexpr CodePoint combiningDotAbove = 0x0307;
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

// One code point from the front of `text`; negative where the bytes are malformed.
struct Step {
    CodePoint codePoint;
    std::size_t length;
};

Step next(std::string_view text) {
    CodePoint codePoint = -1;
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &codePoint);
    return length > 0 ? Step{codePoint, static_cast<std::size_t>(length)} : Step{-1, 1};
}

void append(std::string& out, CodePoint codePoint) {
    utf8proc_uint8_t bytes[4];
    const auto length = utf8proc_encode_char(codePoint, bytes);
    out.append(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
}

std::vector<CodePoint> codePoints(std::string_view text) {
    std::vector<CodePoint> out;
    out.reserve(text.size());
    while (!text.empty()) {
        const Step step = next(text);
        out.push_back(step.codePoint);
        text.remove_prefix(step.length);
    }
    return out;
}

bool isUpper(CodePoint codePoint) {
    const auto category = utf8proc_category(codePoint);
    return category == UTF8PROC_CATEGORY_LU || category == UTF8PROC_CATEGORY_LT;
}

bool isLower(CodePoint codePoint) {
    return utf8proc_category(codePoint) == UTF8PROC_CATEGORY_LL;
}

// The library's own upper case is one to one. A small or title letter whose folding has several
// code points ("ß", ligatures, Greek with iota below) has just their capitals as its full form.
std::vector<CodePoint> fullUpper(CodePoint codePoint) {
    const bool foldable =
        isLower(codePoint) || utf8proc_category(codePoint) == UTF8PROC_CATEGORY_LT;
    if (foldable) {
        CodePoint folded[8];
        const auto count =
            utf8proc_decompose_char(codePoint, folded, 8, UTF8PROC_CASEFOLD, nullptr);
        if (count > 1 && count <= 8) {
            std::vector<CodePoint> out(folded, folded + count);
            for (CodePoint& piece : out) {
                piece = utf8proc_toupper(piece);
            }
            return out;
        }
    }
    return {utf8proc_toupper(codePoint)};
}

void appendLower(std::string& out, CodePoint codePoint) {
    if (codePoint == capitalIWithDot) {
        append(out, 'i');
        append(out, combiningDotAbove);
        return;
    }
    append(out, utf8proc_tolower(codePoint));
}

void appendTitle(std::string& out, CodePoint codePoint) {
    const std::vector<CodePoint> upper = fullUpper(codePoint);
    append(out, upper.front());
    for (std::size_t i = 1; i < upper.size(); ++i) {
        appendLower(out, upper[i]);
    }
}

bool isCaseIgnorable(CodePoint codePoint) {
    if (codePoint == '\'' || codePoint == 0x2019) {
        return true;
    }
    switch (utf8proc_category(codePoint)) {
    case UTF8PROC_CATEGORY_MN:
    case UTF8PROC_CATEGORY_ME:
    case UTF8PROC_CATEGORY_CF:
    case UTF8PROC_CATEGORY_LM:
    case UTF8PROC_CATEGORY_SK:
        return true;
    default:
        return false;
    }
}

bool isBlank(CodePoint codePoint) {
    return codePoint == 0x09 || codePoint == 0x20 || codePoint == 0xA0 || codePoint == 0x1680 ||
           (codePoint >= 0x2000 && codePoint <= 0x200B) || codePoint == 0x202F ||
           codePoint == 0x205F || codePoint == 0x3000;
}

bool isLineBreak(CodePoint codePoint) {
    return (codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x85 || codePoint == 0x2028 ||
           codePoint == 0x2029;
}

template <class Test>
std::string_view trimmedOf(std::string_view text, Test isTrimmed) {
    std::size_t start = text.size();
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size();) {
        const Step step = next(text.substr(at));
        if (!isTrimmed(step.codePoint)) {
            start = std::min(start, at);
            end = at + step.length;
        }
        at += step.length;
    }
    return start < end ? text.substr(start, end - start) : std::string_view{};
}

std::string composed(std::string_view text) {
    utf8proc_uint8_t* raw = nullptr;
    const auto length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &raw,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(raw, &std::free);
    if (length < 0) {
        return std::string(text);
    }
    return {reinterpret_cast<const char*>(raw), static_cast<std::size_t>(length)};
}

// Calls `visit(end)` with the byte offset after each character; stops when it answers false.
template <class Visit>
void eachCharacter(std::string_view text, Visit visit) {
    utf8proc_int32_t state = 0;
    CodePoint previous = -1;
    std::size_t at = 0;
    while (at < text.size()) {
        const Step step = next(text.substr(at));
        if (at > 0 && utf8proc_grapheme_break_stateful(previous, step.codePoint, &state) &&
            !visit(at)) {
            return;
        }
        previous = step.codePoint;
        at += step.length;
    }
    if (!text.empty()) {
        visit(text.size());
    }
}

} // namespace

bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const Step step = next(text);
        if (step.codePoint < 0) {
            return false;
        }
        text.remove_prefix(step.length);
    }
    return true;
}

std::string repaired(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const Step step = next(text);
        out.append(step.codePoint < 0 ? replacementCharacter : text.substr(0, step.length));
        text.remove_prefix(step.length);
    }
    return out;
}

std::string toUpper(std::string_view text) {
    if (!isValidUtf8(text)) {
        return std::string(text);
    }
    std::string out;
    for (const CodePoint codePoint : codePoints(text)) {
        for (const CodePoint piece : fullUpper(codePoint)) {
            append(out, piece);
        }
    }
    return out;
}

std::string toLower(std::string_view text) {
    if (!isValidUtf8(text)) {
        return std::string(text);
    }
    std::string out;
    for (const CodePoint codePoint : codePoints(text)) {
        appendLower(out, codePoint);
    }
    return out;
}

std::string capitalized(std::string_view text) {
    if (!isValidUtf8(text)) {
        return std::string(text);
    }
    std::string out;
    bool insideWord = false;
    for (const CodePoint codePoint : codePoints(text)) {
        if (isUpper(codePoint)) {
            insideWord ? appendLower(out, codePoint) : append(out, codePoint);
            insideWord = true;
        } else if (isLower(codePoint)) {
            insideWord ? append(out, codePoint) : appendTitle(out, codePoint);
            insideWord = true;
        } else {
            append(out, codePoint);
            insideWord = insideWord && isCaseIgnorable(codePoint);
        }
    }
    return out;
}

std::string_view trimmed(std::string_view text) {
    return trimmedOf(
        text, [](CodePoint codePoint) { return isBlank(codePoint) || isLineBreak(codePoint); });
}

std::string_view trimmedOfBlanks(std::string_view text) {
    return trimmedOf(text, isBlank);
}

std::string firstCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    std::size_t seen = 0;
    if (count > 0) {
        eachCharacter(text, [&](std::size_t offset) {
            end = offset;
            return ++seen < count;
        });
    }
    return std::string(text.substr(0, end));
}

bool precedes(std::string_view left, std::string_view right) {
    return composed(left) < composed(right);
}

} // namespace varnhold::unicode
