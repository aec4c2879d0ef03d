#include "views/status/strip_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <string>

namespace varnhold {

namespace {

constexpr int margin = 8; // points

std::string key() {
    QStringList screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect place = screen->geometry();
        screens.append(QStringLiteral("%1x%2+%3+%4")
                           .arg(place.width())
                           .arg(place.height())
                           .arg(place.x())
                           .arg(place.y()));
    }
    screens.sort();
    return "stripPlace " + screens.join(QLatin1Char(' ')).toStdString();
}

} // namespace

std::optional<QPoint> StripPlace::kept() const {
    const QStringList parts =
        QString::fromStdString(defaults_.string(key())).split(QLatin1Char(' '));
    if (parts.size() != 2) {
        return std::nullopt;
    }
    bool hasRight = false;
    bool hasTop = false;
    const QPoint place(parts[0].toInt(&hasRight), parts[1].toInt(&hasTop));
    return hasRight && hasTop ? std::optional(place) : std::nullopt;
}

void StripPlace::keep(const QPoint& upperRight) {
    defaults_.setString(key(),
                        std::to_string(upperRight.x()) + ' ' + std::to_string(upperRight.y()));
}

QPoint freePlace(const QSize& strip, const QRect& area) {
    return {area.x() + area.width() - strip.width() - margin,
            area.y() + area.height() - strip.height() - margin};
}

} // namespace varnhold
