#include "views/status/exported_row.h"

#include "views/status/row_sign.h"
#include "views/text/qt_text.h"

namespace varnhold {

QString exportedText(const QString& text) {
    constexpr char16_t emSpace = u'\u2003';
    QString shown = text;
    shown.replace(QLatin1Char('_'), QLatin1String("__"));
    return shown.replace(QLatin1Char('\t'), QChar(emSpace));
}

QVariantMap exportedRow(const MenuRow& row) {
    if (row.kind == MenuRow::Kind::separator) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    const SignedText text = splitSign(toQString(row.title));
    QVariantMap properties{{QStringLiteral("label"), exportedText(text.text)}};
    if (row.kind != MenuRow::Kind::item) {
        properties[QStringLiteral("enabled")] = false;
    }
    if (text.sign != RowSign::none) {
        properties[QStringLiteral("icon-data")] = signPicture(text.sign);
    }
    if (row.red) {
        properties[QStringLiteral("disposition")] = QStringLiteral("alert");
    }
    return properties;
}

} // namespace varnhold
