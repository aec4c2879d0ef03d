#include "app/single_instance.h"

#include <QLocalSocket>
#include <QThread>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// The first may have locked but not listen yet: it does so within its first milliseconds.
constexpr int knockAttempts = 40;
constexpr std::chrono::duration<unsigned long, std::milli> pauseBetweenKnocks = 50ms;
constexpr int connectTimeout = 1000; // milliseconds

} // namespace

SingleInstance::SingleInstance(std::string folder) : folder_(std::move(folder)) {}

SingleInstance::~SingleInstance() {
    if (lock_ >= 0) {
        ::close(lock_);
    }
}

QString SingleInstance::socketPath() const {
    return QString::fromStdString(folder_ + "/supervisor.socket");
}

bool SingleInstance::claim() {
    ::mkdir(folder_.c_str(), 0700); // if it can't be made, opening the lock tells
    const std::string path = folder_ + "/supervisor.lock";
    lock_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock_ >= 0 && ::flock(lock_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        if (!BusActivation::activateOther()) {
            knock();
        }
        return false;
    }
    // Two sessions of one user may differ in their runtime folders and yet share a bus.
    if (bus_.claim() != BusActivation::Claim::taken) {
        return true;
    }
    static_cast<void>(BusActivation::activateOther()); // alive or not, it is the one
    return false;
}

void SingleInstance::knock() const {
    for (int attempt = 0; attempt < knockAttempts; ++attempt) {
        QLocalSocket socket;
        socket.connectToServer(socketPath(), QIODevice::WriteOnly);
        if (socket.waitForConnected(connectTimeout)) {
            socket.disconnectFromServer();
            return;
        }
        QThread::msleep(pauseBetweenKnocks.count());
    }
}

void SingleInstance::listen(std::function<void()> onKnock) {
    bus_.onActivate(onKnock);
    QLocalServer::removeServer(socketPath());
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_,
                     [this, onKnock = std::move(onKnock)] {
                         while (QLocalSocket* guest = server_.nextPendingConnection()) {
                             guest->deleteLater();
                         }
                         onKnock();
                     });
    server_.listen(socketPath());
}

} // namespace varnhold
