#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

class QPainter;

// Text in which emoji keep their colours.
//
// Text fonts often have plain black signs for characters such as "⚠️" that are meant as emoji,
// and Qt takes the first font that has a character. So the emoji in a text are set in the emoji
// font by name.
namespace varnhold {

// The text as it is to be drawn: emoji fonts know signs of several parts, such as the rainbow flag,
// without the marks inside them that ask for colour, and fall back to the parts with them.
[[nodiscard]] QString withJoinedEmoji(const QString& text);

// Formats that set every emoji of the text in the colour font; empty if there is no such font.
[[nodiscard]] QList<QTextLayout::FormatRange> emojiFormats(const QString& text);

// Width of the text on one line, in points.
[[nodiscard]] qreal emojiTextWidth(const QFont& font, const QString& text);

// From the top of such a line to its baseline: other fonts than the text's own may be taller.
[[nodiscard]] qreal emojiTextAscent(const QFont& font, const QString& text);

// As much of the text as that many points hold, with an ellipsis where some is left out.
[[nodiscard]] QString elidedEmojiText(const QFont& font, const QString& text, qreal width);

// One line in the painter's font and pen, centred from top to bottom, at the left or the right.
void drawEmojiText(QPainter& painter, const QRectF& place, const QString& text,
                   Qt::AlignmentFlag side = Qt::AlignLeft);

} // namespace varnhold
