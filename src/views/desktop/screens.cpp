#include "views/desktop/screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "views/desktop/work_area.h"

namespace varnhold {

namespace {

void watch(QScreen* screen, QObject* context, const std::function<void()>& changed) {
    QObject::connect(screen, &QScreen::geometryChanged, context, changed);
    QObject::connect(screen, &QScreen::availableGeometryChanged, context, changed);
}

// From a point to the nearest of a screen; nothing if the screen has it.
int distance(const QPoint& point, const QRect& screen) {
    const QPoint nearest(std::clamp(point.x(), screen.left(), screen.right()),
                         std::clamp(point.y(), screen.top(), screen.bottom()));
    return (point - nearest).manhattanLength();
}

} // namespace

const QScreen& screenAt(const QRect& rectangle) {
    if (rectangle.isNull()) {
        return *QGuiApplication::primaryScreen();
    }
    const QList<QScreen*> screens = QGuiApplication::screens();
    const QPoint middle = rectangle.center();
    return **std::min_element(
        screens.begin(), screens.end(), [&](const QScreen* a, const QScreen* b) {
            return distance(middle, a->geometry()) < distance(middle, b->geometry());
        });
}

bool isScaledByFraction(const QWidget& widget) {
    const double scale = widget.devicePixelRatioF();
    return scale != std::floor(scale);
}

void onScreensChanged(QObject* context, const std::function<void()>& changed) {
    for (QScreen* screen : QGuiApplication::screens()) {
        watch(screen, context, changed);
    }
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, context,
                     [context, changed](QScreen* screen) {
                         watch(screen, context, changed);
                         changed();
                     });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, context, changed);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, context, changed);
    onPanelsChanged(context, changed);
}

} // namespace varnhold
