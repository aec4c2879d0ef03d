#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace varnhold {

// Text from data as markup that Qt Quick can show: escaped, with emoji in their own font so that
// they keep their colours. Main thread.
class MarkedText final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    // The text, all of it, on one line.
    Q_INVOKABLE [[nodiscard]] QString plain(const QString& text) const;
    // Lines in which "**word**" is bold and "`word`" is set in the given font; nothing else means
    // anything.
    Q_INVOKABLE [[nodiscard]] QString inlineMarkup(const QString& source,
                                                   const QString& codeFamily) const;
    // The words of such lines without their marks, as they are read out.
    Q_INVOKABLE [[nodiscard]] QString spoken(const QString& source) const;
    // The family of the desktop's text.
    Q_INVOKABLE [[nodiscard]] QString textFamily() const;
    // The family of a font whose characters are all of one width.
    Q_INVOKABLE [[nodiscard]] QString codeFamily() const;
    // Points that the text takes on one line.
    Q_INVOKABLE [[nodiscard]] qreal width(const QString& text, const QFont& font) const;
    // As much of the text as that many points hold, with an ellipsis where some is left out.
    Q_INVOKABLE [[nodiscard]] QString elided(const QString& text, const QFont& font,
                                             qreal width) const;
    // Points from the top of such a line to its baseline.
    Q_INVOKABLE [[nodiscard]] qreal ascent(const QString& text, const QFont& font) const;
};

} // namespace varnhold
