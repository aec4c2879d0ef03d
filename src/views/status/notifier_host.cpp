#include "views/status/notifier_host.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <chrono>
#include <functional>
#include <memory>

#include "platform/qt/session_bus.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// Together the longest time for which an icon that nobody shows is believed to be shown.
constexpr auto betweenChecks = 2500ms;
constexpr int answerWithin = 2000;     // milliseconds
constexpr int firstAnswerWithin = 500; // a bus answers in one or two

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString hostPrefix = QStringLiteral("org.kde.StatusNotifierHost");
// Plasma's background process, whatever its version. It keeps a list, says that somebody shows it,
// and shows nothing.
const QString daemonPrefix = QStringLiteral("org.kde.kded");

QDBusMessage hostQuestion() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    question << service << QStringLiteral("IsStatusNotifierHostRegistered");
    question.setAutoStartService(false);
    return question;
}

QDBusMessage busQuestion(const char* method) {
    return QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QLatin1String(method));
}

QDBusMessage ping(const QString& host) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        host, QStringLiteral("/"), QStringLiteral("org.freedesktop.DBus.Peer"),
        QStringLiteral("Ping"));
    question.setAutoStartService(false);
    return question;
}

void ask(QObject* context, const QDBusMessage& question,
         const std::function<void(const QDBusMessage&)>& answered) {
    auto* call = new QDBusPendingCallWatcher(
        QDBusConnection::sessionBus().asyncCall(question, answerWithin), context);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, context, [call, answered] {
        call->deleteLater();
        answered(call->reply());
    });
}

QStringList namesWith(const QString& prefix, QStringList names) {
    names.removeIf([&prefix](const QString& name) { return !name.startsWith(prefix); });
    return names;
}

// Whoever answers lives, be it to say that it doesn't know the question.
bool isSignOfLife(const QDBusMessage& answer) {
    const QDBusError::ErrorType error = QDBusError(answer).type();
    return answer.type() == QDBusMessage::ReplyMessage || error == QDBusError::UnknownMethod ||
           error == QDBusError::UnknownObject || error == QDBusError::UnknownInterface;
}

} // namespace

NotifierHost::NotifierHost(QObject* parent) : QObject(parent) {
    if (!platform::hasSessionBus()) {
        return;
    }
    watch();
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QDBusReply<bool> isListed = bus.interface()->isServiceRegistered(service);
    if (isListed.isValid() && isListed.value()) {
        const QDBusReply<QVariant> answer =
            bus.call(hostQuestion(), QDBus::Block, firstAnswerWithin);
        isThere_ = answer.isValid() && answer.value().toBool();
        signsOfLife_.start();
    }
}

void NotifierHost::watch() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    lists_.setConnection(bus);
    lists_.addWatchedService(service);
    connect(&lists_, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotifierHost::listReplaced);
    hosts_.setConnection(bus);
    hosts_.addWatchedService(hostPrefix + QLatin1Char('*'));
    connect(&hosts_, &QDBusServiceWatcher::serviceOwnerChanged, this, &NotifierHost::check);
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        bus.connect(service, watcherPath, service, QLatin1String(signal), this, SLOT(check()));
    }
    signsOfLife_.setInterval(betweenChecks);
    connect(&signsOfLife_, &QTimer::timeout, this, &NotifierHost::check);
}

// Who keeps the list has gone, come or been replaced: whatever was in it has to be told anew.
void NotifierHost::listReplaced() {
    conclude(++round_, false);
    check();
}

void NotifierHost::check() {
    const int round = ++round_;
    signsOfLife_.start();
    ask(this, hostQuestion(), [this, round](const QDBusMessage& answer) {
        const QDBusReply<QVariant> hasHost = answer;
        if (hasHost.isValid() && hasHost.value().toBool()) {
            askHosts(round, answer.service());
            return;
        }
        conclude(round, false);
        if (hasHost.error().type() == QDBusError::ServiceUnknown && round == round_) {
            signsOfLife_.stop(); // until somebody keeps a list again
        }
    });
}

void NotifierHost::askHosts(int round, const QString& listKeeper) {
    ask(this, busQuestion("ListNames"), [this, round, listKeeper](const QDBusMessage& answer) {
        const QStringList names = QDBusReply<QStringList>(answer).value();
        const QStringList hosts = namesWith(hostPrefix, names);
        const QStringList daemons = namesWith(daemonPrefix, names);
        if (!hosts.isEmpty()) {
            pingAll(hosts, round);
        } else if (!daemons.isEmpty()) {
            askForShower(round, listKeeper, daemons.first());
        } else {
            conclude(round, true); // who keeps the list shows the icons too, and has just answered
        }
    });
}

// The same, unless it is that process who keeps the list.
void NotifierHost::askForShower(int round, const QString& listKeeper, const QString& daemon) {
    QDBusMessage question = busQuestion("GetNameOwner");
    question << daemon;
    ask(this, question, [this, round, listKeeper](const QDBusMessage& answer) {
        conclude(round, QDBusReply<QString>(answer).value() != listKeeper);
    });
}

void NotifierHost::pingAll(const QStringList& hosts, int round) {
    const auto open = std::make_shared<qsizetype>(hosts.size());
    for (const QString& host : hosts) {
        ask(this, ping(host), [this, round, open](const QDBusMessage& answer) {
            --*open;
            if (isSignOfLife(answer)) {
                conclude(round, true);
            } else if (*open == 0) {
                conclude(round, false);
            }
        });
    }
}

void NotifierHost::conclude(int round, bool isThere) {
    if (round != round_ || isThere == isThere_) {
        return;
    }
    isThere_ = isThere;
    emit changed();
}

} // namespace varnhold
