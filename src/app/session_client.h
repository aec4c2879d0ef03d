#pragma once

#include <QByteArray>
#include <QDBusObjectPath>
#include <QObject>
#include <functional>

namespace varnhold {

// Has the desktop's session manager (org.gnome.SessionManager, which other desktops have as well)
// wait for us at the end of the session. It waits until we have gone. Silent where there is none,
// and where the X server's own session protocol does the same. Main thread; calls back from the
// event loop.
class SessionClient final : public QObject {
    Q_OBJECT
public:
    // `startupId`: under which the manager has started us, if it was the manager. `ended`: is
    // called once the session's end can't be taken back.
    SessionClient(const QByteArray& startupId, std::function<void()> ended);

private slots:
    void agree();
    void end();

private:
    void listenAt(const QDBusObjectPath& where);

    QDBusObjectPath path_; // of ourselves there
    std::function<void()> ended_;
};

// What the manager has put into the environment, taken out of it: children are started by us. Call
// before there are other threads.
[[nodiscard]] QByteArray takeSessionStartupId();

} // namespace varnhold
