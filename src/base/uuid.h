#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace varnhold {

// A 128-bit identity. A value; random() may be called on any thread.
class Uuid {
public:
    // All zero, which is an identity like any other.
    Uuid() = default;

    // A fresh one, never given before.
    [[nodiscard]] static Uuid random();

    // Exactly 36 characters, hexadecimal digits of either case with the four hyphens; no braces.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    // The canonical form of this program and the daemons: capitals, with hyphens.
    [[nodiscard]] std::string text() const;

    auto operator<=>(const Uuid&) const = default; // NOLINT(modernize-use-nullptr): the check errs

private:
    std::array<std::uint8_t, 16> bytes_{};
};

} // namespace varnhold
