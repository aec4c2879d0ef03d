#pragma once

#include <functional>
#include <string>
#include <vector>

#include "status/notices.h"

// Where everything stands in the popover of new models, in points from its upper left corner. Pure.
namespace varnhold {

struct PopoverRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const PopoverRectangle&) const = default;
};

struct PopoverText {
    enum class Kind { title, message, warning };

    Kind kind = Kind::title;
    std::string text;
    PopoverRectangle place;
};

struct PopoverLayout {
    PopoverRectangle icon; // of no size where there is none
    std::vector<PopoverText> texts;
    double width = 0;
    double height = 0;
};

// How high a text of that kind is in lines of the given width.
using TextHeight =
    std::function<double(PopoverText::Kind kind, const std::string& text, double width)>;

// The panel's own size, or higher where long messages want it: none is cut.
[[nodiscard]] PopoverLayout popoverLayout(const NoticePanel& panel, bool hasIcon,
                                          const TextHeight& heightOf);

[[nodiscard]] double fontSizeOf(PopoverText::Kind kind);

} // namespace varnhold
