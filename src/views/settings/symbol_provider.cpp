#include "views/settings/symbol_provider.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>

namespace varnhold {

namespace {

constexpr QSize usualSize{16, 16};

} // namespace

QImage SymbolProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
    const QString name = id.section(QLatin1Char('?'), 0, 0);
    const QColor color(QLatin1Char('#') + id.section(QLatin1Char('?'), 1));
    QImage image(requested.isEmpty() ? usualSize : requested, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer drawing(QStringLiteral(":/qt/qml/Varnhold/icons/%1.svg").arg(name));
    if (!drawing.isValid()) {
        qWarning("There is no symbol \"%s\"", qPrintable(name));
        return image;
    }
    QPainter painter(&image);
    drawing.setAspectRatioMode(Qt::KeepAspectRatio);
    drawing.render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    painter.end();
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

QPixmap ApplicationIconProvider::requestPixmap(const QString&, QSize* size,
                                               const QSize& requested) {
    const QSize wanted = requested.isEmpty() ? usualSize : requested;
    QPixmap picture = QGuiApplication::windowIcon().pixmap(wanted, 1.0);
    if (picture.isNull()) {
        picture = QPixmap(wanted);
        picture.fill(Qt::transparent);
    }
    if (size != nullptr) {
        *size = picture.size();
    }
    return picture;
}

} // namespace varnhold
