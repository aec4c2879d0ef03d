#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <gtest/gtest.h>

namespace varnhold::testing {

// A message bus that nobody else is on, with two guests: the one who asks and the one who answers.
class PrivateBus {
public:
    PrivateBus() {
        daemon_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"),
                       QStringLiteral("--print-address"),
                       QStringLiteral("--address=unix:tmpdir=/tmp")});
        EXPECT_TRUE(daemon_.waitForReadyRead());
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    ~PrivateBus() {
        for (const char* name : {"asker", "answerer"}) {
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
        }
        daemon_.kill();
        daemon_.waitForFinished();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    QDBusConnection asker() { return guest(QStringLiteral("asker")); }
    QDBusConnection answerer() { return guest(QStringLiteral("answerer")); }

private:
    QDBusConnection guest(const QString& name) {
        QDBusConnection bus = QDBusConnection::connectToBus(address_, name);
        EXPECT_TRUE(bus.isConnected());
        return bus;
    }

    QProcess daemon_;
    QString address_;
};

} // namespace varnhold::testing
