#pragma once

#include <string>

namespace varnhold {

// The right to come to the front, which a desktop hands to what it starts in the environment, or
// sends along with a call. It is for one process alone: children mustn't inherit it.
struct Activation {
    std::string token;     // under Wayland (XDG activation of freedesktop.org); empty for none
    std::string startupId; // under X11 (startup notification of freedesktop.org); empty for none

    // As one process tells another, and back. No text is refused: what makes no sense is of no use.
    [[nodiscard]] std::string asText() const;
    [[nodiscard]] static Activation fromText(const std::string& text);

    bool operator==(const Activation&) const = default;
};

// That of this start, which stays in the environment for the program that this one becomes.
[[nodiscard]] Activation givenActivation();

// That of this start, taken out of the environment. Call before there are other threads.
[[nodiscard]] Activation takeActivation();

} // namespace varnhold
