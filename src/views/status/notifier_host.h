#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QTimer>

class QDBusPendingCall;

namespace varnhold {

// Knows whether some panel of the session shows icons that describe themselves over the bus
// (StatusNotifierHost, freedesktop.org). Main thread.
//
// That somebody has said so once isn't enough: a panel that hangs, or has died without the bus or
// the list of panels noticing, shows nothing. So the panels are asked for a sign of life now and
// then.
class NotifierHost final : public QObject {
    Q_OBJECT
public:
    // Waits for the first answer for a moment, so that the item doesn't appear in one place and
    // jump to another.
    explicit NotifierHost(QObject* parent = nullptr);

    [[nodiscard]] bool isThere() const { return isThere_; }

signals:
    // It has come or gone, or another one has taken its place.
    void changed();

private slots:
    void check();

private:
    void watch();
    void askHosts(int round, const QString& listKeeper);
    void askForShower(int round, const QString& listKeeper, const QString& daemon);
    void pingAll(const QStringList& hosts, int round);
    void conclude(int round, bool isThere);
    void listReplaced();

    QDBusServiceWatcher lists_;
    QDBusServiceWatcher hosts_;
    QTimer signsOfLife_;
    int round_ = 0; // answers to an earlier one say nothing any more
    bool isThere_ = false;
};

} // namespace varnhold
