#include "app/coming_forward.h"

#include <QGuiApplication>
#include <QWindow>
#include <string>

#include "views/desktop/startup_notice.h"
#include "views/desktop/token_in_use.h"

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
    withToken(token, work);
    if (!id.empty()) {
        bringWindowsForward(id);
    }
    endStartup(activation.startupId);
}

} // namespace varnhold
