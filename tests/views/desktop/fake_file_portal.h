#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <utility>

namespace varnhold::testing {

// What the portal has for one question.
class FakeFileRequest final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Request")
public:
    bool isClosed = false;

public slots:
    // NOLINTNEXTLINE(readability-identifier-naming): the interface's own name
    void Close() { isClosed = true; }
};

// A portal that shows nothing and answers what the test says.
class FakeFilePortal final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
    Q_PROPERTY(uint version MEMBER version)
public:
    explicit FakeFilePortal(QDBusConnection bus) : bus_(std::move(bus)) {}

    uint version = 3;
    bool refuses = false;
    bool choosesPathItself = false;
    std::function<void()> asked = [] {};
    QString parent, title, path;
    QVariantMap options;
    FakeFileRequest request;

    bool offer() {
        return bus_.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                   QDBusConnection::ExportAllSlots |
                                       QDBusConnection::ExportAllProperties) &&
               bus_.registerService(service_);
    }
    void vanish() { bus_.unregisterService(service_); }

    void respond(uint code, const QStringList& uris = {}) {
        QDBusMessage response = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        bus_.send(response << code << QVariantMap{{QStringLiteral("uris"), uris}});
    }

    // NOLINTBEGIN(readability-identifier-naming): the interface's own name
public slots:
    QDBusObjectPath OpenFile(const QString& over, const QString& words, const QVariantMap& how) {
        if (refuses) {
            sendErrorReply(QDBusError::Failed, QStringLiteral("no"));
            return {};
        }
        parent = over;
        title = words;
        options = how;
        path = QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
                   .arg(message().service().mid(1).replace(QLatin1Char('.'), QLatin1Char('_')),
                        choosesPathItself ? QStringLiteral("own")
                                          : how.value(QStringLiteral("handle_token")).toString());
        bus_.registerObject(path, &request, QDBusConnection::ExportAllSlots);
        asked();
        return QDBusObjectPath(path);
    }
    // NOLINTEND(readability-identifier-naming)

private:
    const QString service_ = QStringLiteral("org.freedesktop.portal.Desktop");
    QDBusConnection bus_;
};

} // namespace varnhold::testing
