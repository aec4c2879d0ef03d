#include "app/session_client.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <utility>

#include "platform/qt/session_bus.h"

namespace varnhold {

namespace {

constexpr const char* startupVariable = "DESKTOP_AUTOSTART_ID";

const QString managerService = QStringLiteral("org.gnome.SessionManager");
const QString managerPath = QStringLiteral("/org/gnome/SessionManager");
const QString managerInterface = QStringLiteral("org.gnome.SessionManager");
const QString clientInterface = QStringLiteral("org.gnome.SessionManager.ClientPrivate");

bool xServersProtocolIsSpoken() {
    return QGuiApplication::platformName() == QLatin1String("xcb") &&
           !qEnvironmentVariableIsEmpty("SESSION_MANAGER");
}

} // namespace

QByteArray takeSessionStartupId() {
    QByteArray id = qgetenv(startupVariable);
    qunsetenv(startupVariable);
    return id;
}

SessionClient::SessionClient(const QByteArray& startupId, std::function<void()> ended)
    : ended_(std::move(ended)) {
    if (xServersProtocolIsSpoken() || !platform::hasSessionBus()) {
        return;
    }
    QDBusMessage request = QDBusMessage::createMethodCall(
        managerService, managerPath, managerInterface, QStringLiteral("RegisterClient"));
    request << QGuiApplication::desktopFileName() << QString::fromLocal8Bit(startupId);
    request.setAutoStartService(false);
    auto* call =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QDBusObjectPath> answer = *call;
        if (answer.isValid()) {
            listenAt(answer.value());
        }
        call->deleteLater();
    });
}

void SessionClient::listenAt(const QDBusObjectPath& where) {
    path_ = where;
    QDBusConnection bus = QDBusConnection::sessionBus();
    const auto on = [&](const char* signal, const char* slot) {
        bus.connect(managerService, where.path(), clientInterface, QLatin1String(signal), this,
                    slot);
    };
    on("QueryEndSession", SLOT(agree()));
    on("EndSession", SLOT(end()));
    on("Stop", SLOT(end()));
}

// Every edit is saved as it is made, so there is nothing to ask the user about.
void SessionClient::agree() {
    QDBusMessage answer = QDBusMessage::createMethodCall(
        managerService, path_.path(), clientInterface, QStringLiteral("EndSessionResponse"));
    answer << true << QString();
    answer.setAutoStartService(false);
    QDBusConnection::sessionBus().send(answer);
}

// Left without an answer: the manager goes on when our name leaves the bus, and by then the fleet
// is down.
void SessionClient::end() {
    ended_();
}

} // namespace varnhold
