#include "views/desktop/own_frame.h"

#include <QGuiApplication>
#include <QWidget>
#include <QWindow>

namespace varnhold {

// A window that needs no frame for a moment gets another one then.
void renewOwnFrame(const QWidget& window) {
    QWindow* handle = window.windowHandle();
    if (handle == nullptr || !handle->isVisible() ||
        !QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) {
        return;
    }
    const Qt::WindowFlags flags = handle->flags();
    handle->setFlags(flags | Qt::FramelessWindowHint);
    handle->setFlags(flags);
}

} // namespace varnhold
