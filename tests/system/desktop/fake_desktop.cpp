// Pieces of a desktop for tests, one or more of them by name:
//
//   panel   has room for described tray icons: it owns the name that they announce themselves to
//   and
//           remembers who came. Whoever tests then asks the icons themselves.
//   list    keeps such a list and shows nothing, as Plasma's background process does.
//   host    shows icons of a panel's list, or so its name on the bus says.
//   portal  tells the desktop's wishes for the look of windows: color-scheme 2, for light, until a
//           line on standard input says something else, as "KEY VALUE" does for every key of
//           portalKeys.
//   notifications
//           shows notifications and tells of the last.
//   sessions
//           ends the session in order, with everybody's consent, at the line "end".
//   dying   has the supervisor's own name, and ends without an answer when it is called.
//
// Runs until it is ended.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QMap>
#include <QSocketNotifier>
#include <QStringList>
#include <QVariantMap>
#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

class Watcher final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems MEMBER items_)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ version)
public:
    using QObject::QObject;

    [[nodiscard]] static bool hasHost() { return true; }
    [[nodiscard]] static int version() { return 0; }

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the interface's own name
    void RegisterStatusNotifierItem(const QString& service) { items_.append(service); }
    // Strikes all off, as some panels do without a reason that their guests would know of.
    // NOLINTNEXTLINE(readability-identifier-naming): as above
    void Forget() {
        for (const QString& item : std::exchange(items_, {})) {
            emit StatusNotifierItemUnregistered(item);
        }
    }

signals:
    // NOLINTNEXTLINE(readability-identifier-naming): as above
    void StatusNotifierItemUnregistered(const QString& item);

private:
    QStringList items_;
};

using SettingGroups = QMap<QString, QVariantMap>;

// What a portal tells, with a value of its type.
struct PortalKey {
    QString group;
    QVariant value;
};

const QMap<QString, PortalKey> portalKeys{
    {QStringLiteral("color-scheme"), {QStringLiteral("org.freedesktop.appearance"), 2U}},
    {QStringLiteral("contrast"), {QStringLiteral("org.freedesktop.appearance"), 0U}},
    {QStringLiteral("high-contrast"), {QStringLiteral("org.gnome.desktop.a11y.interface"), false}},
};

class Portal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    Portal() { change(QStringLiteral("color-scheme"), QStringLiteral("2")); }

    void change(const QString& key, const QString& value) {
        const PortalKey known = portalKeys.value(key);
        QVariant typed(value);
        typed.convert(known.value.metaType());
        groups_[known.group][key] = typed;
        // Wrapped twice, as the first version of the interface does.
        emit SettingChanged(known.group, key,
                            QDBusVariant(QVariant::fromValue(QDBusVariant(typed))));
    }

    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
public slots:
    [[nodiscard]] SettingGroups ReadAll(const QStringList&) const { return groups_; }

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);
    // NOLINTEND(readability-identifier-naming)

private:
    SettingGroups groups_;
};

class Dying final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    using QObject::QObject;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the interface's own name
    static void Activate(const QVariantMap&) { std::_Exit(EXIT_SUCCESS); }
};

class Notifications final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
    Q_PROPERTY(QStringList Shown MEMBER shown_)
public:
    using QObject::QObject;

    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
public slots:
    [[nodiscard]] static QStringList GetCapabilities() { return {QStringLiteral("body")}; }
    uint Notify(const QString& name, uint, const QString& icon, const QString& title,
                const QString& text, const QStringList&, const QVariantMap& hints, int duration) {
        shown_ = {name,
                  icon,
                  title,
                  text,
                  hints.value(QStringLiteral("desktop-entry")).toString(),
                  QString::number(duration)};
        return 1;
    }
    void CloseNotification(uint) { shown_.clear(); }
    // NOLINTEND(readability-identifier-naming)

private:
    QStringList shown_;
};

class SessionGuest final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager.ClientPrivate")
public:
    using QObject::QObject;

    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
public slots:
    void EndSessionResponse(bool agreed, const QString&) {
        if (agreed) {
            emit EndSession(0);
        }
    }

signals:
    void QueryEndSession(uint flags);
    void EndSession(uint flags);
    // NOLINTEND(readability-identifier-naming)
};

class Sessions final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager")
    Q_PROPERTY(QStringList Guests MEMBER guests_)
public:
    using QObject::QObject;

    void end() { emit guest_.QueryEndSession(0); }

    // NOLINTBEGIN(readability-identifier-naming): the interface's own names
public slots:
    QDBusObjectPath RegisterClient(const QString& name, const QString& startupId) {
        guests_ = {name, startupId};
        const QString path = QStringLiteral("/org/gnome/SessionManager/Client1");
        QDBusConnection::sessionBus().registerObject(
            path, &guest_, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        return QDBusObjectPath(path);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    SessionGuest guest_;
    QStringList guests_;
};

bool offer(QObject& object, const QString& path, const QString& service) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    const auto everything = QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                            QDBusConnection::ExportAllProperties;
    return bus.registerObject(path, &object, everything) && bus.registerService(service);
}

// Whether the word was said; what it stands for is then offered.
bool offerIfAsked(const char* word, QObject& object, const char* path, const char* service) {
    return !QCoreApplication::arguments().contains(QLatin1String(word)) ||
           offer(object, QString::fromLatin1(path), QString::fromLatin1(service));
}

// Whether all that is asked for of a tray is there.
bool offerTray(Watcher& watcher) {
    const QStringList pieces = QCoreApplication::arguments();
    const auto own = [&pieces](const char* piece, const QString& name) {
        return !pieces.contains(QLatin1String(piece)) ||
               QDBusConnection::sessionBus().registerService(name);
    };
    const char* path = "/StatusNotifierWatcher";
    const char* service = "org.kde.StatusNotifierWatcher";
    return offerIfAsked("panel", watcher, path, service) &&
           offerIfAsked("list", watcher, path, service) &&
           own("list", QStringLiteral("org.kde.kded5")) &&
           own("host", QStringLiteral("org.kde.StatusNotifierHost-%1")
                           .arg(QCoreApplication::applicationPid()));
}

// Does what all lines that are there say, since nothing tells of those again. Whether more may
// come.
bool obey(Portal& portal, Sessions& sessions) {
    std::string line;
    do {
        std::getline(std::cin, line);
        if (line == "end") {
            sessions.end();
        } else if (std::cin) {
            const QStringList words = QString::fromStdString(line).split(QLatin1Char(' '));
            portal.change(words.front(), words.back());
        }
    } while (std::cin && std::cin.rdbuf()->in_avail() > 0);
    return static_cast<bool>(std::cin);
}

} // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false); // or nobody could tell whether another line is there
    QCoreApplication app(argc, argv);
    Watcher watcher;
    if (!offerTray(watcher)) {
        return EXIT_FAILURE;
    }
    qDBusRegisterMetaType<SettingGroups>();
    Portal portal;
    Sessions sessions;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &portal, [&] {
        if (!obey(portal, sessions)) {
            input.setEnabled(false);
        }
    });
    if (!offerIfAsked("portal", portal, "/org/freedesktop/portal/desktop",
                      "org.freedesktop.portal.Desktop")) {
        return EXIT_FAILURE;
    }
    if (!offerIfAsked("sessions", sessions, "/org/gnome/SessionManager",
                      "org.gnome.SessionManager")) {
        return EXIT_FAILURE;
    }
    Notifications notifications;
    if (!offerIfAsked("notifications", notifications, "/org/freedesktop/Notifications",
                      "org.freedesktop.Notifications")) {
        return EXIT_FAILURE;
    }
    Dying dying;
    if (!offerIfAsked("dying", dying, "/com/ostrelleai/Varnhold", "com.ostrelleai.Varnhold")) {
        return EXIT_FAILURE;
    }
    return QCoreApplication::exec();
}

#include "fake_desktop.moc"
