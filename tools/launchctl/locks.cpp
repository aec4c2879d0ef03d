#include "launchctl/locks.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace varnhold::services {

namespace {

int openLock(const platform::PrivateFolder& folder, const std::string& name) {
    return folder.open(name, O_RDWR | O_CREAT);
}

} // namespace

Result<FileLock> FileLock::take(const platform::PrivateFolder& folder, const std::string& name,
                                Kind kind) {
    FileLock lock(openLock(folder, name));
    const int operation = kind == Kind::shared ? LOCK_SH : LOCK_EX;
    while (lock.file_ >= 0) {
        if (::flock(lock.file_, operation) == 0) {
            return lock;
        }
        if (errno != EINTR) {
            break;
        }
    }
    return failure(folder.path() + "/" + name + ": " + std::system_category().message(errno));
}

std::optional<FileLock> FileLock::tryExclusive(const platform::PrivateFolder& folder,
                                               const std::string& name) {
    FileLock lock(openLock(folder, name));
    if (lock.file_ < 0 || ::flock(lock.file_, LOCK_EX | LOCK_NB) != 0) {
        return std::nullopt;
    }
    return lock;
}

FileLock::FileLock(FileLock&& other) noexcept : file_(std::exchange(other.file_, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    std::swap(file_, other.file_);
    return *this;
}

FileLock::~FileLock() {
    if (file_ >= 0) {
        ::close(file_);
    }
}

} // namespace varnhold::services
