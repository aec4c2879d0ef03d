#include "views/status/strip_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <string>

namespace varnhold {

namespace {

constexpr int margin = 8;     // points, as all of these
constexpr int halfClock = 90; // with the mark beside it that something is unread

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

// The signs' part grows with what a computer has; a quarter of the width is more than they take.
std::optional<QPoint> placeInTopBar(const QSize& strip, const QRect& screen, const QRect& area) {
    const int bar = area.y() - screen.y();
    const int right = screen.x() + screen.width() * 3 / 4;
    const int left = right - strip.width();
    if (bar < strip.height() || left < screen.x() + screen.width() / 2 + halfClock) {
        return std::nullopt;
    }
    return QPoint(left, screen.y() + (bar - strip.height()) / 2);
}

} // namespace varnhold
