#pragma once

#include <random>
#include <string>

namespace varnhold::services {

// Text of one- and two-byte characters that may stand in a label, short enough for any of them.
inline std::string randomLabel(std::mt19937& random) {
    std::uniform_int_distribution<int> ascii(0x20, 0x7E);
    std::uniform_int_distribution<unsigned> beyond(0xA0, 0x7FF);
    std::uniform_int_distribution<std::size_t> length(1, 37);
    std::string label;
    for (std::size_t left = length(random); left > 0; --left) {
        if (left % 3 == 0) {
            const unsigned point = beyond(random);
            label += static_cast<char>(0xC0U | (point >> 6U));
            label += static_cast<char>(0x80U | (point & 0x3FU));
        } else {
            label += static_cast<char>(ascii(random));
        }
    }
    return label;
}

} // namespace varnhold::services
