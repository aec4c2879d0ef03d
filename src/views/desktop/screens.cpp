#include "views/desktop/screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <cmath>

namespace varnhold {

namespace {

void watch(QScreen* screen, QObject* context, const std::function<void()>& changed) {
    QObject::connect(screen, &QScreen::geometryChanged, context, changed);
    QObject::connect(screen, &QScreen::availableGeometryChanged, context, changed);
}

} // namespace

const QScreen& screenAt(const QRect& rectangle) {
    const QScreen* screen = QGuiApplication::screenAt(rectangle.center());
    return screen != nullptr ? *screen : *QGuiApplication::primaryScreen();
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
}

} // namespace varnhold
