#include "app/single_instance.h"

#include <QLocalSocket>
#include <QThread>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "app/knock.h"
#include "platform/private_folder.h"

namespace varnhold {

namespace {

using namespace std::chrono_literals;

// The first may have locked but not listen yet, which it does within its first milliseconds, or
// listen no more.
constexpr std::chrono::duration<unsigned long, std::milli> pauseBetweenTries = 50ms;
constexpr qint64 longestToken = 65536;

// What a guest says is whole when he has no more to say.
void hear(QLocalSocket& guest, const BusActivation::Activated& onKnock) {
    guest.setReadBufferSize(longestToken);
    QObject::connect(&guest, &QLocalSocket::readyRead, &guest, [&guest] {
        if (guest.bytesAvailable() >= longestToken) {
            guest.abort(); // nobody reads on, so his end would never be heard
        }
    });
    QObject::connect(&guest, &QLocalSocket::disconnected, &guest, [&guest, onKnock] {
        const auto activation = Activation::fromText(guest.readAll().toStdString());
        guest.deleteLater();
        onKnock(activation);
    });
}

} // namespace

SingleInstance::SingleInstance(std::string folder, Activation activation)
    : folder_(std::move(folder)), activation_(std::move(activation)) {}

SingleInstance::~SingleInstance() {
    if (lock_ >= 0) {
        ::close(lock_);
    }
}

SingleInstance::Lock SingleInstance::tryLock() {
    if (lock_ < 0) {
        const auto folder = platform::PrivateFolder::make(folder_);
        if (!folder) {
            return Lock::impossible;
        }
        lock_ = folder->open("supervisor.lock", O_RDWR | O_CREAT);
    }
    if (lock_ >= 0 && ::flock(lock_, LOCK_EX | LOCK_NB) == 0) {
        return Lock::ours;
    }
    return lock_ >= 0 && errno == EWOULDBLOCK ? Lock::taken : Lock::impossible;
}

bool SingleInstance::claim() {
    Lock lock = tryLock();
    // Asked in turns rather than waited for: of several later starts one becomes the next, and the
    // others have to be heard by it instead of standing in line for its end.
    while (lock == Lock::taken) {
        if (BusActivation::activateOther(activation_) || knock(folder_, activation_.asText())) {
            return false;
        }
        QThread::msleep(pauseBetweenTries.count());
        lock = tryLock();
    }
    hasLock_ = lock == Lock::ours;
    // Two sessions of one user may differ in their runtime folders and yet share a bus.
    if (bus_.claim() != BusActivation::Claim::taken) {
        return true;
    }
    if (BusActivation::activateOther(activation_)) {
        return false;
    }
    // The bus hears of an owner's end a little later than the lock, but before it fails a call.
    return bus_.claim() != BusActivation::Claim::taken;
}

void SingleInstance::listen(BusActivation::Activated onKnock, BusActivation::Acted onAction) {
    bus_.onActivate(onKnock);
    bus_.onAction(std::move(onAction));
    if (!hasLock_) {
        return; // the socket there may be somebody else's
    }
    const QString path = QString::fromStdString(knockingPath(folder_));
    QLocalServer::removeServer(path);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_,
                     [this, onKnock = std::move(onKnock)] {
                         while (QLocalSocket* guest = server_.nextPendingConnection()) {
                             hear(*guest, onKnock);
                         }
                     });
    server_.listen(path);
}

void SingleInstance::stopListening() {
    bus_.release();
    server_.close();
}

} // namespace varnhold
