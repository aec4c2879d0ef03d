#include "doctor/tones.h"

#include <array>

namespace varnhold::doctor {

std::string toned(Tone tone, const std::string& text, bool color) {
    if (!color || tone == Tone::plain || text.empty()) {
        return text;
    }
    constexpr std::array<const char*, 7> codes{"", "1", "2", "1;31", "1;33", "36", "32"};
    return "\x1b[" + std::string(codes.at(static_cast<std::size_t>(tone))) + "m" + text + "\x1b[0m";
}

} // namespace varnhold::doctor
