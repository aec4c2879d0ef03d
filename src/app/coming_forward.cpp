#include "app/coming_forward.h"

#include <QByteArray>
#include <QGuiApplication>
#include <QWindow>
#include <string>

#include "views/desktop/startup_notice.h"

namespace varnhold {

namespace {

void bringWindowsForward(const std::string& startupId) {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->type() == Qt::Window) {
            bringForward(*window, startupId);
        }
    }
}

} // namespace

void withActivation(const Activation& activation, const std::function<void()>& work) {
    // Older launchers hand a token over by the older name alone.
    const std::string& token = activation.token.empty() ? activation.startupId : activation.token;
    const std::string& id = activation.startupId.empty() ? activation.token : activation.startupId;
    // Other threads may be starting children, so the environment isn't touched without need.
    const bool isOfUse =
        !token.empty() && QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (isOfUse) {
        qputenv(activationTokenVariable, QByteArray::fromStdString(token));
    }
    work();
    if (isOfUse) {
        qunsetenv(activationTokenVariable);
    }
    if (!id.empty()) {
        bringWindowsForward(id);
    }
    endStartup(activation.startupId);
}

} // namespace varnhold
