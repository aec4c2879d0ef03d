// A desktop panel with room for described tray icons, for tests: it owns the name that such icons
// announce themselves to and remembers who came. Whoever tests then asks the icons themselves. It
// runs until it is ended.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusContext>
#include <QStringList>

namespace {

class Watcher final : public QObject, protected QDBusContext {
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

private:
    QStringList items_;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    Watcher watcher;
    QDBusConnection bus = QDBusConnection::sessionBus();
    const bool ready = bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                                          QDBusConnection::ExportAllSlots |
                                              QDBusConnection::ExportAllProperties) &&
                       bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    return ready ? QCoreApplication::exec() : EXIT_FAILURE;
}

#include "main.moc"
