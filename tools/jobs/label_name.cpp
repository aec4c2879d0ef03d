#include "jobs/label_name.h"

#include <charconv>
#include <system_error>
#include <utility>

#include "base/unicode.h"

namespace varnhold::services {

namespace {

// A name may not pass 255 bytes, of which managers need some for themselves. The one that writes an
// odd byte with most characters decides, so that no manager takes a label that another refuses.
constexpr std::size_t longestName = 224;
constexpr std::size_t longestEscape = 4; // "\\x20" in a unit's name
constexpr std::string_view hexDigits = "0123456789ABCDEF";

// Also what some readers take for a line break or a control character beyond ASCII: U+0080 to
// U+009F, U+2028 and U+2029.
bool holdsControl(std::string_view label) {
    for (std::size_t i = 0; i < label.size(); ++i) {
        const auto byte = static_cast<unsigned char>(label[i]);
        const auto next = static_cast<unsigned char>(i + 1 < label.size() ? label[i + 1] : 0);
        const std::string_view rest = label.substr(i);
        if (byte < 0x20 || byte == 0x7F || (byte == 0xC2 && next < 0xA0) ||
            rest.starts_with("\xE2\x80\xA8") || rest.starts_with("\xE2\x80\xA9")) {
            return true;
        }
    }
    return false;
}

bool standsForItself(char c, bool first) {
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return letter || (c >= '0' && c <= '9') || c == '-' || c == '_' || (c == '.' && !first);
}

std::optional<Label> decoded(std::string_view name) {
    std::string label;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] != '%') {
            label += name[i];
            continue;
        }
        unsigned byte = 0;
        const std::string_view digits = name.substr(i + 1, 2);
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (digits.size() < 2 || error != std::errc{} || end != digits.data() + 2) {
            return std::nullopt;
        }
        label += static_cast<char>(byte);
        i += 2;
    }
    return Label{std::move(label)};
}

} // namespace

Result<JobName> nameOfLabel(const Label& whole) {
    const std::string& label = whole.text;
    if (label.empty()) {
        return failure("a label can't be empty");
    }
    // One such label would make a whole listing unreadable.
    if (!unicode::isValidUtf8(label)) {
        return failure("a label must be text in UTF-8");
    }
    if (holdsControl(label)) {
        return failure("a label can't hold control characters");
    }
    std::string name;
    std::size_t longest = 0;
    for (const char c : label) {
        longest += standsForItself(c, name.empty()) ? 1 : longestEscape;
        if (standsForItself(c, name.empty())) {
            name += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            name += {'%', hexDigits[byte >> 4U], hexDigits[byte & 15U]};
        }
    }
    if (longest > longestName) {
        return failure("the label is too long");
    }
    return JobName(std::move(name));
}

Label JobName::label() const {
    return decoded(text_).value_or(Label());
}

std::optional<JobName> jobNamed(std::string_view text) {
    // Only what nameOfLabel gives is a name: "%41" isn't one, since "A" stands for itself.
    const auto label = decoded(text);
    auto name = label ? nameOfLabel(*label) : failure("no name");
    return name && name->text() == text ? std::optional(*std::move(name)) : std::nullopt;
}

std::optional<Label> labelOfName(std::string_view text) {
    const auto name = jobNamed(text);
    return name ? std::optional(name->label()) : std::nullopt;
}

} // namespace varnhold::services
