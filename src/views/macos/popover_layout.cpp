#include "views/macos/popover_layout.h"

#include <algorithm>

namespace varnhold {

namespace {

using Kind = PopoverText::Kind;
namespace style = noticeStyle;

// Puts one under the other.
class Column final {
public:
    Column(PopoverLayout& layout, const TextHeight& heightOf)
        : layout_(layout), heightOf_(heightOf) {}

    void add(Kind kind, const std::string& text, double gap) {
        bottom_ += gap;
        const double width = layout_.width - 2 * style::padding;
        const double height = heightOf_(kind, text, width);
        layout_.texts.push_back({kind, text, {style::padding, bottom_, width, height}});
        bottom_ += height;
    }
    void skip(double height) { bottom_ += height; }
    [[nodiscard]] double bottom() const { return bottom_; }

private:
    PopoverLayout& layout_;
    const TextHeight& heightOf_;
    double bottom_ = 0;
};

// Icon and title, in the middle of a line as high as the higher of them.
double addHeader(PopoverLayout& layout, const std::string& title, bool hasIcon,
                 const TextHeight& heightOf) {
    double left = style::padding;
    double height = 0;
    if (hasIcon) {
        left += style::iconSize + style::headerSpacing;
        height = style::iconSize;
    }
    const double width = layout.width - left - style::padding;
    const double titleHeight = heightOf(Kind::title, title, width);
    height = std::max(height, titleHeight);
    const double top = style::padding;
    if (hasIcon) {
        layout.icon = {style::padding, top + (height - style::iconSize) / 2, style::iconSize,
                       style::iconSize};
    }
    layout.texts.push_back(
        {Kind::title, title, {left, top + (height - titleHeight) / 2, width, titleHeight}});
    return height;
}

} // namespace

double fontSizeOf(Kind kind) {
    switch (kind) {
    case Kind::title:
        return style::titleSize;
    case Kind::message:
        return style::messageSize;
    case Kind::warning:
        break;
    }
    return style::warningSize;
}

PopoverLayout popoverLayout(const NoticePanel& panel, bool hasIcon, const TextHeight& heightOf) {
    PopoverLayout layout;
    layout.width = panel.width;
    Column column(layout, heightOf);
    column.skip(style::padding + addHeader(layout, panel.title, hasIcon, heightOf));
    for (const ModelNotice& notice : panel.notices) {
        column.add(Kind::message, notice.message, style::spacing);
        if (notice.inChain) {
            column.add(Kind::warning, chainWarning, style::lineSpacing);
        }
    }
    layout.height = std::max<double>(panel.height, column.bottom() + style::padding);
    return layout;
}

} // namespace varnhold
