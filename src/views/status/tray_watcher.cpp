#include "views/status/tray_watcher.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <chrono>

#include "platform/qt/session_bus.h"
#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// A tray of the older kind announces itself to nobody but those who listen to the root window; one
// question now and then costs less than that.
constexpr auto embeddedInterval = 2s;
constexpr int firstAnswerWithin = 500; // milliseconds; a bus answers in one or two

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString path = QStringLiteral("/StatusNotifierWatcher");

QDBusMessage hostQuestion() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << service << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    return question;
}

} // namespace

TrayWatcher::TrayWatcher(QObject* parent) : QObject(parent) {
    if (platform::hasSessionBus()) {
        watchNotifiers();
    }
    if (hasX11()) {
        connect(&embeddedTimer_, &QTimer::timeout, this, &TrayWatcher::decide);
        embeddedTimer_.start(embeddedInterval);
    }
    decide();
}

void TrayWatcher::watchNotifiers() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    watcher_.setConnection(bus);
    watcher_.addWatchedService(service);
    connect(&watcher_, &QDBusServiceWatcher::serviceRegistered, this, &TrayWatcher::askForHost);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { hostAnswered(false); });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect(service, path, service, QLatin1String(signal), this, SLOT(askForHost()));
    }
    // The first answer is waited for, so that the item doesn't appear in one place and jump to
    // another.
    const QDBusReply<bool> isThere = bus.interface()->isServiceRegistered(service);
    if (isThere.isValid() && isThere.value()) {
        const QDBusReply<QVariant> answer =
            bus.call(hostQuestion(), QDBus::Block, firstAnswerWithin);
        hasNotifierHost_ = answer.isValid() && answer.value().toBool();
    }
}

void TrayWatcher::askForHost() {
    auto* call =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(hostQuestion()), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call] {
        const QDBusPendingReply<QVariant> answer = *call;
        hostAnswered(answer.isValid() && answer.value().toBool());
        call->deleteLater();
    });
}

void TrayWatcher::hostAnswered(bool hasHost) {
    hasNotifierHost_ = hasHost;
    decide();
}

void TrayWatcher::decide() {
    TrayKind now = TrayKind::none;
    if (hasNotifierHost_ && spoken_ != TrayKind::embedded) {
        now = TrayKind::notifier;
    } else if (spoken_ != TrayKind::notifier && hasEmbeddedTray()) {
        now = TrayKind::embedded;
    }
    if (now == kind_) {
        return;
    }
    kind_ = now;
    if (spoken_ == TrayKind::none) {
        spoken_ = now;
    }
    emit changed();
}

} // namespace varnhold
