#include "platform/qt/session_bus.h"

#include <QDBusConnection>
#include <QFile>

namespace varnhold::platform {

bool hasSessionBus() {
    const bool named =
        qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
        QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
    return named && QDBusConnection::sessionBus().isConnected();
}

} // namespace varnhold::platform
