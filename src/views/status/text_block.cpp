#include "views/status/text_block.h"

#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "views/text/emoji_text.h"

namespace varnhold {

namespace {

constexpr int hintWidth = 240; // points; whoever lays the block out gives it its real one

// Breaks the text into lines of the width; gives the height of all.
qreal breakLines(QTextLayout& layout, const QFont& font, qreal width) {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.setFormats(emojiFormats(layout.text()));
    const qreal lineHeight = std::ceil(QFontMetricsF(font).lineSpacing());
    qreal top = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        // All lines alike, whether or not there is an emoji in them.
        line.setPosition({0, top + QFontMetricsF(font).ascent() - line.ascent()});
        top += lineHeight;
    }
    layout.endLayout();
    return top;
}

} // namespace

TextBlock::TextBlock(const QString& text, QWidget* parent)
    : QWidget(parent), text_(withJoinedEmoji(text)) {
    text_.replace(QLatin1Char('\n'), QChar::LineSeparator);
    setAccessibleName(text);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

int TextBlock::heightForWidth(int width) const {
    QTextLayout layout(text_, font());
    return static_cast<int>(std::ceil(breakLines(layout, font(), width)));
}

QSize TextBlock::sizeHint() const {
    return {hintWidth, heightForWidth(hintWidth)};
}

void TextBlock::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    QTextLayout layout(text_, font());
    breakLines(layout, font(), width());
    layout.draw(&painter, {0, 0});
}

} // namespace varnhold
