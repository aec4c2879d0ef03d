#include "base/uuid.h"

#include <cstring>
#include <random>

namespace varnhold {

namespace {

constexpr std::string_view digits = "0123456789ABCDEF";
constexpr std::size_t textLength = 36;

bool isHyphenPlace(std::size_t at) {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

std::optional<std::uint8_t> digitValue(char digit) {
    if (digit >= 'a' && digit <= 'f') {
        digit = static_cast<char>(digit - 'a' + 'A');
    }
    const std::size_t value = digits.find(digit);
    return value == std::string_view::npos ? std::nullopt
                                           : std::optional(static_cast<std::uint8_t>(value));
}

} // namespace

Uuid Uuid::random() {
    std::random_device source; // 32 bits at each call, and a call is slow
    Uuid out;
    for (std::size_t at = 0; at < out.bytes_.size(); at += sizeof(std::uint32_t)) {
        const std::uint32_t word = source();
        std::memcpy(&out.bytes_[at], &word, sizeof word);
    }
    // Marks of the random kind (RFC 4122, version 4).
    out.bytes_[6] = static_cast<std::uint8_t>((out.bytes_[6] & 0x0FU) | 0x40U);
    out.bytes_[8] = static_cast<std::uint8_t>((out.bytes_[8] & 0x3FU) | 0x80U);
    return out;
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    Uuid out;
    std::size_t nibble = 0;
    for (std::size_t at = 0; at < textLength; ++at) {
        if (isHyphenPlace(at)) {
            if (text[at] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const auto value = digitValue(text[at]);
        if (!value) {
            return std::nullopt;
        }
        std::uint8_t& byte = out.bytes_[nibble / 2];
        byte = static_cast<std::uint8_t>((byte << 4U) | *value);
        ++nibble;
    }
    return out;
}

std::string Uuid::text() const {
    std::string out;
    out.reserve(textLength);
    for (const std::uint8_t byte : bytes_) {
        if (isHyphenPlace(out.size())) {
            out += '-';
        }
        out += digits[byte >> 4U];
        out += digits[byte & 0x0FU];
    }
    return out;
}

} // namespace varnhold
