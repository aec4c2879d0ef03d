#include "views/text/qt_text.h"

#include "base/text.h"

namespace varnhold {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString shownText(std::string_view text) {
    constexpr std::size_t longest = 1000; // bytes: no window is as wide
    return toQString(text::beginning(text, longest));
}

QString menuText(std::string_view text) {
    constexpr char16_t emSpace = u'\u2003'; // looks like the tab that was typed
    return toQString(text)
        .replace(QLatin1Char('&'), QLatin1String("&&"))
        .replace(QLatin1Char('\t'), QChar(emSpace));
}

} // namespace varnhold
