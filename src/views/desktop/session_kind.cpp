#include "views/desktop/session_kind.h"

#include <QGuiApplication>
#include <QStringList>

namespace varnhold {

namespace {

QStringList currentDesktop() {
    return qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
}

} // namespace

bool desktopIsWayland() {
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland")) ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           qEnvironmentVariable("XDG_SESSION_TYPE") == QLatin1String("wayland");
}

bool utilityWindowsAreLeftAlone() {
    const QStringList desktop = currentDesktop();
    return !desktopIsWayland() || desktop.contains(QLatin1String("GNOME")) ||
           desktop.contains(QLatin1String("KDE"));
}

bool trayShowsWindowsWithAlpha() {
    return !currentDesktop().contains(QLatin1String("X-Cinnamon"));
}

bool stripMayStandInTopBar() {
    const QStringList desktop = currentDesktop();
    return desktopIsWayland() && desktop.contains(QLatin1String("GNOME")) &&
           !desktop.contains(QLatin1String("GNOME-Flashback")); // which has an ordinary panel
}

} // namespace varnhold
