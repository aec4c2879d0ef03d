#include "views/settings/marked_text.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QRegularExpression>

#include "views/text/emoji_text.h"

namespace varnhold {

namespace {

QString withEmoji(const QString& text) {
    QString marked;
    qsizetype done = 0;
    for (const auto& range : emojiFormats(text)) {
        marked += text.mid(done, range.start - done).toHtmlEscaped();
        marked += QStringLiteral("<span style=\"font-family:'%1';text-decoration:none\">%2</span>")
                      .arg(range.format.fontFamilies().toStringList().value(0),
                           text.mid(range.start, range.length).toHtmlEscaped());
        done = range.start + range.length;
    }
    return marked + text.mid(done).toHtmlEscaped();
}

const QRegularExpression& inlineMarks() {
    static const QRegularExpression marks(QStringLiteral(R"(\*\*(.+?)\*\*|`(.+?)`)"));
    return marks;
}

QString keepBlanks(const QString& marked) {
    return QStringLiteral("<span style=\"white-space:pre-wrap\">%1</span>").arg(marked);
}

} // namespace

QString MarkedText::plain(const QString& text) const {
    QString line = withJoinedEmoji(text);
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return keepBlanks(withEmoji(line));
}

QString MarkedText::inlineMarkup(const QString& source, const QString& codeFamily) const {
    QString marked;
    qsizetype done = 0;
    for (auto found = inlineMarks().globalMatch(source); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        marked += withEmoji(source.mid(done, match.capturedStart() - done));
        marked += match.capturedStart(1) >= 0
                      ? QStringLiteral("<b>%1</b>").arg(withEmoji(match.captured(1)))
                      : QStringLiteral("<span style=\"font-family:'%1'\">%2</span>")
                            .arg(codeFamily, match.captured(2).toHtmlEscaped());
        done = match.capturedEnd();
    }
    marked += withEmoji(source.mid(done));
    marked.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    return QStringLiteral("<p style=\"line-height:115%\">%1</p>").arg(keepBlanks(marked));
}

QString MarkedText::spoken(const QString& source) const {
    return QString(source).replace(inlineMarks(), QStringLiteral("\\1\\2"));
}

QString MarkedText::textFamily() const {
    return QGuiApplication::font().family();
}

QString MarkedText::codeFamily() const {
    const QFont wanted = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (QFontInfo(wanted).fixedPitch()) {
        return QFontInfo(wanted).family();
    }
    for (const QString& family : QFontDatabase::families()) {
        if (QFontDatabase::isFixedPitch(family) && !QFontDatabase::isPrivateFamily(family)) {
            return family;
        }
    }
    return wanted.family();
}

qreal MarkedText::width(const QString& text, const QFont& font) const {
    return emojiTextWidth(font, text);
}

QString MarkedText::elided(const QString& text, const QFont& font, qreal width) const {
    return elidedEmojiText(font, text, width);
}

qreal MarkedText::ascent(const QString& text, const QFont& font) const {
    return emojiTextAscent(font, text);
}

} // namespace varnhold
