#include "views/desktop/display_connection.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>
#include <array>
#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

namespace varnhold {

namespace {

// Path of the socket that the descriptor is connected to; empty for everything else.
QByteArray peerOf(int descriptor) {
    sockaddr_un peer{};
    socklen_t length = sizeof peer;
    if (::getpeername(descriptor, reinterpret_cast<sockaddr*>(&peer), &length) != 0 ||
        peer.sun_family != AF_UNIX || length <= offsetof(sockaddr_un, sun_path)) {
        return {};
    }
    return {peer.sun_path};
}

// As the library of the protocol finds it (WAYLAND_DISPLAY, freedesktop.org).
QByteArray compositorPath() {
    const QString name = qEnvironmentVariable("WAYLAND_DISPLAY", QStringLiteral("wayland-0"));
    return QFile::encodeName(QDir(qEnvironmentVariable("XDG_RUNTIME_DIR")).absoluteFilePath(name));
}

// The toolkit keeps its connection to itself, but it is the only one of the process.
int waylandConnection() {
    const QByteArray path = compositorPath();
    for (const QString& entry : QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System)) {
        bool isNumber = false;
        const int descriptor = entry.toInt(&isNumber);
        if (isNumber && peerOf(descriptor) == path) {
            return descriptor;
        }
    }
    return -1;
}

} // namespace

int displayConnection() {
    if (auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>()) {
        return xcb_get_file_descriptor(x11->connection());
    }
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"))
               ? waylandConnection()
               : -1;
}

} // namespace varnhold
