#include "views/status/row_sign.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <array>
#include <map>

#include "status/job_list.h"
#include "views/text/qt_text.h"

namespace varnhold {

namespace {

constexpr int side = 32; // pixels, for menus that show half of it on finer screens
constexpr qreal discMargin = 5;
constexpr qreal rimWidth = 2;

struct Disc {
    RowSign sign;
    QString text;
    QRgb fill;
    QRgb rim; // seen on light and on dark
};

const std::array<Disc, 3>& discs() {
    static const std::array<Disc, 3> all{
        Disc{RowSign::running, toQString(indicator(DaemonStatus::running)), 0xff2fb344, 0xff1f8a31},
        Disc{RowSign::stopped, toQString(indicator(DaemonStatus::stopped)), 0xffe4e4e8, 0xff8e8e98},
        Disc{RowSign::crashed, toQString(indicator(DaemonStatus::crashed)), 0xffe5252a,
             0xffad161b}};
    return all;
}

const QString& warning() {
    static const QString text = QString::fromUtf8("⚠️");
    return text;
}

void paintWarning(QPainter& painter) {
    painter.setPen(
        QPen(QColor::fromRgba(0xffe5252a), 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(QColor::fromRgba(0xffe5252a));
    painter.drawPolygon(QPolygonF({{16, 5}, {29, 27}, {3, 27}}));
    painter.setPen(QPen(Qt::white, 3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(16, 12), QPointF(16, 19));
    painter.drawPoint(QPointF(16, 24.5));
}

QByteArray painted(RowSign sign) {
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Disc& disc : discs()) {
        if (disc.sign == sign) {
            painter.setPen(QPen(QColor::fromRgba(disc.rim), rimWidth));
            painter.setBrush(QColor::fromRgba(disc.fill));
            painter.drawEllipse(
                QRectF(picture.rect()).adjusted(discMargin, discMargin, -discMargin, -discMargin));
        }
    }
    if (sign == RowSign::alert) {
        paintWarning(painter);
    }
    painter.end();
    QByteArray file;
    QBuffer buffer(&file);
    picture.save(&buffer, "PNG");
    return file;
}

} // namespace

SignedText splitSign(const QString& title) {
    const auto rest = [&](const QString& sign) { return title.mid(sign.size()).trimmed(); };
    for (const Disc& disc : discs()) {
        if (title.startsWith(disc.text)) {
            return {disc.sign, rest(disc.text)};
        }
    }
    if (title.startsWith(warning())) {
        return {RowSign::alert, rest(warning())};
    }
    return {RowSign::none, title};
}

QByteArray signPicture(RowSign sign) {
    if (sign == RowSign::none) {
        return {};
    }
    static std::map<RowSign, QByteArray> made;
    QByteArray& file = made[sign];
    if (file.isEmpty()) {
        file = painted(sign);
    }
    return file;
}

} // namespace varnhold
