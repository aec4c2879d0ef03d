#include "platform/qt/session_bus.h"

#include <QDBusPendingCallWatcher>
#include <QFile>

namespace varnhold::platform {

bool hasSessionBus() {
    const bool named =
        qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
        QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
    return named && QDBusConnection::sessionBus().isConnected();
}

void ask(const QDBusConnection& bus, QObject* context, const QDBusMessage& question,
         const std::function<void(const QDBusMessage& answer)>& answered, int patience) {
    auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(question, patience), context);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, context, [pending, answered] {
        pending->deleteLater();
        answered(pending->reply());
    });
}

} // namespace varnhold::platform
