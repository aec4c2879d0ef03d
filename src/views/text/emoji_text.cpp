#include "views/text/emoji_text.h"

#include <QFontDatabase>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <limits>

namespace varnhold {

namespace {

constexpr char32_t emojiVariation = 0xFE0F;
constexpr char32_t firstPictograph = 0x1F000;

QString findEmojiFamily() {
    const QStringList known{QStringLiteral("Noto Color Emoji"), QStringLiteral("Apple Color Emoji"),
                            QStringLiteral("Twemoji Mozilla"), QStringLiteral("JoyPixels")};
    for (const QString& family : known) {
        if (QFontDatabase::hasFamily(family)) {
            return family;
        }
    }
    return {};
}

bool isEmoji(const QString& character) {
    const auto codePoints = character.toUcs4();
    return std::any_of(codePoints.begin(), codePoints.end(), [](char32_t codePoint) {
        return codePoint == emojiVariation || codePoint >= firstPictograph;
    });
}

// The one line of a layout, without breaks.
QTextLine layOut(QTextLayout& layout) {
    layout.setFormats(emojiFormats(layout.text()));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setLineWidth(std::numeric_limits<int>::max());
    }
    layout.endLayout();
    return line;
}

} // namespace

QList<QTextLayout::FormatRange> emojiFormats(const QString& text) {
    static const QString family = findEmojiFamily();
    QList<QTextLayout::FormatRange> formats;
    if (family.isEmpty()) {
        return formats;
    }
    QTextCharFormat format;
    format.setFontFamilies({family});
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
    qsizetype start = 0;
    for (qsizetype end = characters.toNextBoundary(); end > start;
         end = characters.toNextBoundary()) {
        if (isEmoji(text.mid(start, end - start))) {
            formats.append({static_cast<int>(start), static_cast<int>(end - start), format});
        }
        start = end;
    }
    return formats;
}

qreal emojiTextWidth(const QFont& font, const QString& text) {
    QTextLayout layout(text, font);
    const QTextLine line = layOut(layout);
    // With blanks at the end, which a natural width leaves out.
    return line.isValid() ? line.cursorToX(static_cast<int>(text.size())) : 0;
}

void drawEmojiText(QPainter& painter, const QRectF& place, const QString& text,
                   Qt::AlignmentFlag side) {
    QTextLayout layout(text, painter.font());
    const QTextLine line = layOut(layout);
    if (!line.isValid()) {
        return;
    }
    // Emoji fonts have tall lines; the text font alone decides where the baseline is.
    const QFontMetricsF metrics(painter.font());
    const qreal baseline = place.center().y() + (metrics.ascent() - metrics.descent()) / 2;
    const qreal left =
        side == Qt::AlignRight ? place.right() - line.naturalTextWidth() : place.left();
    layout.draw(&painter, {left, baseline - line.ascent()});
}

} // namespace varnhold
