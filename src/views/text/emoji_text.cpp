#include "views/text/emoji_text.h"

#include <QCache>
#include <QFontDatabase>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <limits>
#include <string>

#include "base/unicode.h"

namespace varnhold {

namespace {

constexpr char32_t emojiVariation = 0xFE0F;
constexpr char32_t firstPictograph = 0x1F000;
constexpr char32_t joiner = 0x200D;
constexpr char32_t firstSign = 0x2190; // of arrows, dingbats and the like
constexpr char32_t lastSign = 0x2BFF;
constexpr QChar ellipsis(0x2026);
constexpr int mostKnownWidths = 1000;

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
    if (codePoints.contains(joiner) && codePoints.front() >= firstSign &&
        codePoints.front() <= lastSign) {
        return true; // such as a heart on fire, whose heart is a plain sign by itself
    }
    return std::any_of(codePoints.begin(), codePoints.end(), [](char32_t codePoint) {
        return codePoint == emojiVariation || codePoint >= firstPictograph;
    });
}

// Signs that stand side by side may be drawn as one, such as flags.
void append(QList<QTextLayout::FormatRange>& formats, const QTextLayout::FormatRange& next) {
    if (!formats.isEmpty() && formats.last().start + formats.last().length == next.start) {
        formats.last().length += next.length;
    } else {
        formats.append(next);
    }
}

// The one line of a layout, without breaks, from its left end whatever the script. Blanks at its
// end have their width too.
QTextLine layOut(QTextLayout& layout) {
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setFormats(emojiFormats(layout.text()));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setLineWidth(std::numeric_limits<int>::max());
    }
    layout.endLayout();
    return line;
}

qreal laidOutWidth(const QFont& font, const QString& text) {
    QTextLayout layout(text, font);
    const QTextLine line = layOut(layout);
    return line.isValid() ? line.naturalTextWidth() : 0;
}

// The system decodes a coloured sign's picture to tell its width, each time: of a menu's measuring
// that was nearly all. On the main thread only, like all here.
qreal emojiWidth(const QFont& font, const QString& emoji) {
    static QCache<QPair<QString, QString>, qreal> known(mostKnownWidths);
    const QPair<QString, QString> key(font.key(), emoji);
    if (const qreal* width = known.object(key)) {
        return *width;
    }
    const qreal width = laidOutWidth(font, emoji);
    known.insert(key, new qreal(width));
    return width;
}

} // namespace

QString withJoinedEmoji(const QString& text) {
    return QString(text).replace(QStringLiteral("\uFE0F\u200D"), QStringLiteral("\u200D"));
}

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
            append(formats, {static_cast<int>(start), static_cast<int>(end - start), format});
        }
        start = end;
    }
    return formats;
}

// Emoji stand in a font of their own, so that they and what is between them can be measured one by
// one.
qreal emojiTextWidth(const QFont& font, const QString& text) {
    const QString joined = withJoinedEmoji(text);
    qreal width = 0;
    qsizetype start = 0;
    for (const QTextLayout::FormatRange& emoji : emojiFormats(joined)) {
        width += laidOutWidth(font, joined.mid(start, emoji.start - start)) +
                 emojiWidth(font, joined.mid(emoji.start, emoji.length));
        start = emoji.start + emoji.length;
    }
    return width + laidOutWidth(font, joined.mid(start));
}

qreal emojiTextAscent(const QFont& font, const QString& text) {
    QTextLayout layout(withJoinedEmoji(text), font);
    const QTextLine line = layOut(layout);
    return line.isValid() ? line.ascent() : QFontMetricsF(font).ascent();
}

QString elidedEmojiText(const QFont& font, const QString& text, qreal width) {
    if (emojiTextWidth(font, text) <= width) {
        return text;
    }
    const std::string whole = text.toStdString();
    const auto shortened = [&](std::size_t characters) {
        return QString::fromStdString(unicode::firstCharacters(whole, characters)).trimmed() +
               ellipsis;
    };
    std::size_t fits = 0; // of this many characters it is known, of the other that they don't
    std::size_t tooMany = static_cast<std::size_t>(text.size());
    while (tooMany - fits > 1) {
        const std::size_t middle = fits + (tooMany - fits) / 2;
        (emojiTextWidth(font, shortened(middle)) <= width ? fits : tooMany) = middle;
    }
    return fits == 0 ? QString(ellipsis) : shortened(fits);
}

void drawEmojiText(QPainter& painter, const QRectF& place, const QString& text,
                   Qt::AlignmentFlag side) {
    QTextLayout layout(withJoinedEmoji(text), painter.font());
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
