#include "lifecycle/property_list_check.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "base/text.h"

namespace varnhold {

namespace {

using text::countOccurrences;

constexpr std::string_view binaryMark = "bplist00";
constexpr int mostLevels = 64;
constexpr std::size_t mostValues = 20'000;
constexpr std::size_t mostContainers = 1'000; // also bounds how deep an XML list can nest

tl::unexpected<std::string> refuse(const char* why) {
    return failure(std::string("a property list ") + why);
}

// A reference such as "&#0;", in any base and with any zeros; one with more digits than any
// character has may wrap round to it.
bool refersToNul(std::string_view text) {
    constexpr std::size_t mostDigits = 7;
    for (std::size_t at = text.find("&#"); at != std::string_view::npos;
         at = text.find("&#", at + 2)) {
        std::string_view number = text.substr(at + 2);
        if (number.starts_with('x') || number.starts_with('X')) {
            number.remove_prefix(1);
        }
        const std::size_t length = std::min(number.find(';'), number.size());
        number = number.substr(0, length);
        if (length > mostDigits || number.find_first_not_of('0') == std::string_view::npos) {
            return true;
        }
    }
    return false;
}

// Counted rather than parsed, so that no two readings of comments and sections can differ: what
// stands in those counts too.
Result<void> checkXml(std::string_view text) {
    if (text.find('\0') != std::string_view::npos || refersToNul(text)) {
        return refuse("can't hold a NUL");
    }
    if (countOccurrences(text, "<dict") + countOccurrences(text, "<array") +
            countOccurrences(text, "<plist") >
        mostContainers) {
        return refuse("can't nest that deep");
    }
    if (countOccurrences(text, "<") >
        2 * mostValues) { // a value has a tag before it and one behind
        return refuse("can't hold that many values");
    }
    return {};
}

// Walks a binary list as often as its values are named, up to the limits.
class BinaryList {
public:
    explicit BinaryList(std::string_view content) : content_(content) {}

    Result<void> check() {
        constexpr std::size_t trailer = 32;
        if (content_.size() < binaryMark.size() + trailer) {
            return refuse("ends too early");
        }
        const std::size_t at = content_.size() - trailer;
        offsetSize_ = byte(at + 6);
        referenceSize_ = byte(at + 7);
        objects_ = number(at + 8, 8).value_or(0);
        table_ = number(at + 24, 8).value_or(0);
        return value(number(at + 16, 8).value_or(0), 0) ? Result<void>() : refuse(why_);
    }

private:
    [[nodiscard]] unsigned byte(std::size_t at) const {
        return static_cast<unsigned char>(content_[at]);
    }

    [[nodiscard]] std::optional<std::uint64_t> number(std::uint64_t at, unsigned size) const {
        if (size == 0 || size > 8 || at > content_.size() || content_.size() - at < size) {
            return std::nullopt;
        }
        std::uint64_t out = 0;
        for (unsigned i = 0; i < size; ++i) {
            out = out << 8U | byte(at + i);
        }
        return out;
    }

    bool no(const char* why) {
        why_ = why;
        return false;
    }

    // The length in a value's first byte, or in the number that follows it; `at` goes behind both.
    std::optional<std::uint64_t> length(std::uint64_t& at) const {
        constexpr unsigned isBehind = 15;
        const unsigned inFirst = byte(at++) & 15U;
        if (inFirst != isBehind) {
            return inFirst;
        }
        const auto kind = number(at, 1);
        if (!kind || (*kind >> 4U) != 1 || (*kind & 15U) > 3) {
            return std::nullopt;
        }
        const unsigned size = 1U << (*kind & 15U);
        const auto out = number(at + 1, size);
        at += 1 + size;
        return out;
    }

    bool value(std::uint64_t object, int level) {
        if (level > mostLevels || ++values_ > mostValues) {
            return no(level > mostLevels ? "can't nest that deep" : "can't hold that many values");
        }
        const auto start = object < objects_ && object <= content_.size()
                               ? number(table_ + object * offsetSize_, offsetSize_)
                               : std::nullopt;
        if (!start || *start >= content_.size()) {
            return no("names a value that isn't there");
        }
        std::uint64_t at = *start;
        switch (byte(at) >> 4U) {
        case 0x5: // text of one byte a character
        case 0x6: // and of two
            return text(at, byte(at) >> 4U == 0x5 ? 1 : 2);
        case 0xA: // array
        case 0xC: // set
            return members(at, 1, level);
        case 0xD: // dictionary: its keys, then its values
            return members(at, 2, level);
        default:
            return true;
        }
    }

    bool text(std::uint64_t at, unsigned size) {
        const auto characters = length(at);
        if (!characters || *characters > content_.size()) {
            return no("ends too early");
        }
        for (std::uint64_t i = 0; i < *characters; ++i) {
            const auto character = number(at + i * size, size);
            if (!character || *character == 0) {
                return no(character ? "can't hold a NUL" : "ends too early");
            }
        }
        return true;
    }

    bool members(std::uint64_t at, std::uint64_t columns, int level) {
        const auto rows = length(at);
        if (!rows || *rows > content_.size()) {
            return no("ends too early");
        }
        for (std::uint64_t i = 0; i < *rows * columns; ++i) {
            const auto object = number(at + i * referenceSize_, referenceSize_);
            if (!object) {
                return no("ends too early");
            }
            if (!value(*object, level + 1)) {
                return false;
            }
        }
        return true;
    }

    std::string_view content_;
    unsigned offsetSize_ = 0;
    unsigned referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t table_ = 0;
    std::size_t values_ = 0;
    const char* why_ = "";
};

} // namespace

Result<void> checkPropertyList(std::string_view content) {
    if (content.size() > largestPropertyList) {
        return refuse("can't be larger than a megabyte");
    }
    return content.starts_with(binaryMark) ? BinaryList(content).check() : checkXml(content);
}

} // namespace varnhold
