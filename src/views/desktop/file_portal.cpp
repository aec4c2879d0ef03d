#include "views/desktop/file_portal.h"

#include <QByteArray>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QRandomGenerator>
#include <QStringDecoder>
#include <QWindow>
#include <optional>
#include <utility>

#include "platform/qt/session_bus.h"
#include "views/desktop/x11_hints.h"

namespace varnhold {

namespace {

constexpr int patience = 5000;   // ms, for a portal to come or to answer that it will ask
constexpr uint sinceFolders = 3; // the first version of the interface that asks for one
constexpr uint isChosen = 0;     // responses; all but these two are failures
constexpr uint isCancelled = 1;
constexpr char delimiterOfPaths = '/'; // in URIs

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString chooser = QStringLiteral("org.freedesktop.portal.FileChooser");
const QString request = QStringLiteral("org.freedesktop.portal.Request");

QDBusMessage call(const QString& path, const QString& interface, const QString& method) {
    return QDBusMessage::createMethodCall(service, path, interface, method);
}

// A name that nobody else on the bus has asked under.
QString newToken() {
    return QStringLiteral("varnhold%1").arg(QRandomGenerator::global()->generate());
}

QVariantMap optionsOf(const FileQuestion& question, const QString& token) {
    return {{QStringLiteral("handle_token"), token},
            {QStringLiteral("accept_label"), question.acceptLabel},
            {QStringLiteral("modal"), true},
            {QStringLiteral("multiple"), !question.folder},
            {QStringLiteral("directory"), question.folder}};
}

// The path of one URI, if it is a file of this machine's with a name that is text.
std::optional<QString> localPath(const QString& uri) {
    const QString scheme = QStringLiteral("file://");
    if (!uri.startsWith(scheme, Qt::CaseInsensitive)) {
        return std::nullopt;
    }
    const QByteArray place = uri.mid(scheme.size()).toUtf8();
    const qsizetype root = place.indexOf(delimiterOfPaths);
    const QByteArray host = place.left(root);
    if (root < 0 || (!host.isEmpty() && host != "localhost")) {
        return std::nullopt;
    }
    QByteArray path = QByteArray::fromPercentEncoding(place.mid(root));
    while (path.size() > 1 && path.endsWith(delimiterOfPaths)) {
        path.chop(1);
    }
    QStringDecoder text(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = text(path);
    if (text.hasError() || path.contains('\0')) {
        return std::nullopt;
    }
    return decoded;
}

} // namespace

FilePortal::FilePortal(const QDBusConnection& bus, const FileQuestion& question, Answers answers,
                       QObject* parent)
    : QObject(parent), bus_(bus), answers_(std::move(answers)) {
    auto* life =
        new QDBusServiceWatcher(service, bus_, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(life, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { finish(answers_.failed); });
    // Starts the portal if need be. One without dialogs has no such interface.
    QDBusMessage version =
        call(portalPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    version << chooser << QStringLiteral("version");
    const auto answered = [this, question](const QDBusMessage& answer) {
        const auto known = answer.arguments().value(0).value<QDBusVariant>().variant().toUInt();
        if (answer.type() != QDBusMessage::ReplyMessage ||
            (question.folder && known < sinceFolders)) {
            finish(answers_.failed);
            return;
        }
        askFor(question);
    };
    platform::ask(bus_, this, version, answered, patience);
}

FilePortal::~FilePortal() {
    if (!request_.isEmpty()) {
        QDBusMessage close = call(request_, request, QStringLiteral("Close"));
        close.setAutoStartService(false); // a portal that has gone has no dialog
        bus_.send(close);
    }
}

void FilePortal::askFor(const FileQuestion& question) {
    const QString token = newToken();
    QString sender = bus_.baseService().mid(1);
    sender.replace(QLatin1Char('.'), QLatin1Char('_'));
    // Where the answer will be, so that none comes too early to be heard.
    listenAt(portalPath + QStringLiteral("/request/%1/%2").arg(sender, token));
    QDBusMessage open = call(portalPath, chooser, QStringLiteral("OpenFile"));
    open << question.parentWindow << question.title << optionsOf(question, token);
    const auto answered = [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage) {
            finish(answers_.failed);
            return;
        }
        const QString path = answer.arguments().value(0).value<QDBusObjectPath>().path();
        if (path != request_) { // a very old portal chooses it by itself
            listenAt(path);
        }
    };
    platform::ask(bus_, this, open, answered, patience);
}

void FilePortal::listenAt(const QString& requestPath) {
    request_ = requestPath;
    bus_.connect(service, request_, request, QStringLiteral("Response"), this,
                 SLOT(responded(uint, QVariantMap)));
}

void FilePortal::responded(uint code, const QVariantMap& results) {
    request_.clear(); // it closes itself
    const QStringList paths = localPaths(results.value(QStringLiteral("uris")).toStringList());
    if (code == isChosen && !paths.isEmpty()) {
        finish([chosen = answers_.chosen, paths] { chosen(paths); });
    } else {
        finish(code == isChosen || code == isCancelled ? answers_.cancelled : answers_.failed);
    }
}

// What is called may delete this object.
void FilePortal::finish(const std::function<void()>& answer) {
    const auto last = answer;
    answers_ = {.chosen = [](const QStringList&) {}, .cancelled = [] {}, .failed = [] {}};
    deleteLater();
    last();
}

QString portalNameOf(const QWindow* window) {
    return window != nullptr && hasX11() ? QStringLiteral("x11:%1").arg(window->winId(), 0, 16)
                                         : QString();
}

QStringList localPaths(const QStringList& uris) {
    QStringList paths;
    for (const QString& uri : uris) {
        if (const auto path = localPath(uri)) {
            paths.append(*path);
        }
    }
    return paths;
}

} // namespace varnhold
