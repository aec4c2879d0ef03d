#include "app/bus_activation.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <utility>

#include "platform/qt/session_bus.h"

namespace varnhold {

namespace {

const QString service = QStringLiteral("com.ostrelleai.Varnhold");
const QString path = QStringLiteral("/com/ostrelleai/Varnhold");
const QString interface = QStringLiteral("org.freedesktop.Application");
// The other may be in the middle of a poll, whose child process it waits for.
constexpr int answerWithin = 10000; // milliseconds

const QString tokenKey = QStringLiteral("activation-token");
const QString startupKey = QStringLiteral("desktop-startup-id");
// Set by the bus for what it starts.
constexpr const char* starterVariable = "DBUS_STARTER_BUS_TYPE";

Activation activationIn(const QVariantMap& platformData) {
    return {.token = platformData.value(tokenKey).toString().toStdString(),
            .startupId = platformData.value(startupKey).toString().toStdString()};
}

} // namespace

BusActivation::Claim BusActivation::claim() {
    if (!platform::hasSessionBus()) {
        return Claim::noBus;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    // The object first: whoever sees the name may call at once.
    bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    if (bus.registerService(service)) {
        hasName_ = true;
        return Claim::ours;
    }
    bus.unregisterObject(path);
    return bus.isConnected() ? Claim::taken : Claim::noBus;
}

void BusActivation::release() {
    if (!hasName_) {
        return;
    }
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(path);
    // Not waited for: this comes before the fleet's end, which a bus that hangs mustn't hold up.
    QDBusMessage request = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ReleaseName"));
    request << service;
    bus.send(request);
    hasName_ = false;
}

bool BusActivation::activateOther(const Activation& activation) {
    if (!platform::hasSessionBus()) {
        return false;
    }
    QDBusMessage request =
        QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Activate"));
    request.setAutoStartService(false);
    QVariantMap platformData;
    if (!activation.token.empty()) {
        platformData[tokenKey] = QString::fromStdString(activation.token);
    }
    if (!activation.startupId.empty()) {
        platformData[startupKey] = QString::fromStdString(activation.startupId);
    }
    request << platformData;
    const QDBusMessage answer =
        QDBusConnection::sessionBus().call(request, QDBus::Block, answerWithin);
    return answer.type() == QDBusMessage::ReplyMessage;
}

void BusActivation::onActivate(Activated activated) {
    activated_ = std::move(activated);
    isStart_ = qEnvironmentVariableIsSet(starterVariable);
    qunsetenv(starterVariable); // it is about this process, not its children
}

void BusActivation::Activate(const QVariantMap& platformData) {
    if (activated_ && !std::exchange(isStart_, false)) {
        activated_(activationIn(platformData));
    }
}

// There are no documents of our own; whoever asks for them sees the program.
void BusActivation::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void BusActivation::ActivateAction(const QString& action, const QVariantList&,
                                   const QVariantMap& platformData) {
    if (acted_) {
        acted_(action, activationIn(platformData));
    }
}

} // namespace varnhold
