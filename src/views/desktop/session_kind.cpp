#include "views/desktop/session_kind.h"

#include <QGuiApplication>
#include <QStringList>

namespace varnhold {

bool desktopIsWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland");
}

bool utilityWindowsAreLeftAlone() {
    const QStringList desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    return !desktopIsWayland() || desktop.contains(QLatin1String("GNOME")) ||
           desktop.contains(QLatin1String("KDE"));
}

} // namespace varnhold
