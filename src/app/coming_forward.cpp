#include "app/coming_forward.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>
#include <cstdint>

#include "views/desktop/startup_notice.h"

namespace varnhold {

namespace {

void bringWindowsForward(std::uint32_t time) {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->type() == Qt::Window) {
            bringForward(*window, time);
        }
    }
}

} // namespace

void withActivation(const Activation& activation, const std::function<void()>& work) {
    // Other threads may be starting children, so the environment isn't touched without need.
    const bool isOfUse = !activation.token.empty() &&
                         QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (isOfUse) {
        qputenv(activationTokenVariable, QByteArray::fromStdString(activation.token));
    }
    work();
    if (isOfUse) {
        qunsetenv(activationTokenVariable);
    }
    if (const auto time = startupTime(activation.startupId)) {
        bringWindowsForward(*time);
    }
    endStartup(activation.startupId);
}

} // namespace varnhold
