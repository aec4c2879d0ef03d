#pragma once

#include <QColor>
#include <array>
#include <string_view>

#include "views/colors/colors.h"

namespace varnhold {

// The colour of a model's row: as desktops have it under that name, and as it is painted under
// white words on a light and on a dark desktop.
struct ModelGround {
    std::string_view name;
    QRgb wanted;
    QRgb onLight;
    QRgb onDark;
};

// Opaque, so that a model is of one colour wherever it stands. Each is as bright as white words,
// and fainter ones at four fifths, can be read on; orange and yellow, which would both be brown
// then, keep apart by their hues. Those on dark desktops are a little brighter.
inline constexpr std::array<ModelGround, 10> modelGrounds{{
    {"purple", 0xffaf52de, 0xff8336a4, 0xff8d3ab0},
    {"blue", 0xff007aff, 0xff0f56b9, 0xff105cc7},
    {"green", 0xff34c759, 0xff166834, 0xff177038},
    {"orange", 0xffff9500, 0xff9d3900, 0xffa83d00},
    {"cyan", 0xff32ade6, 0xff0f6089, 0xff106793},
    {"red", 0xffff3b30, 0xffab1e22, 0xffb82025},
    {"teal", 0xff30b0c7, 0xff08646b, 0xff096c73},
    {"indigo", 0xff5856d6, 0xff504abf, 0xff5852c2},
    {"pink", 0xffff2d55, 0xffa81b56, 0xffb41d5c},
    {"yellow", 0xffffcc00, 0xff6a5a00, 0xff726100},
}};

// The ground of that name, and indigo for a name that none has; white words on it are of the
// look's contrast. Any thread.
[[nodiscard]] QColor modelGround(std::string_view name, const Look& look);

} // namespace varnhold
