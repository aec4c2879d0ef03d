#include "jobs/locks.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "base/files.h"

namespace varnhold::services {

namespace {

int openLock(const platform::PrivateFolder& folder, const std::string& name) {
    return folder.open(name, O_RDWR | O_CREAT);
}

constexpr int lockLimit = 10; // seconds; far longer than any work but a bootout of the same job

volatile std::sig_atomic_t rung = 0;

// Interrupts a call that waits, once the time is up and then again and again: it could ring just
// before the call.
class Alarm final {
public:
    explicit Alarm(int seconds) {
        rung = 0;
        struct sigaction ring {};
        ring.sa_handler = [](int) { rung = 1; };
        ::sigaction(SIGALRM, &ring, &before_);
        sigset_t own{};
        ::sigemptyset(&own);
        ::sigaddset(&own, SIGALRM);
        ::pthread_sigmask(SIG_UNBLOCK, &own, &mask_); // whatever the caller has handed down
        const itimerval timer{.it_interval = {.tv_sec = 0, .tv_usec = 100'000},
                              .it_value = {.tv_sec = seconds, .tv_usec = 0}};
        ::setitimer(ITIMER_REAL, &timer, nullptr);
    }
    Alarm(const Alarm&) = delete;
    Alarm& operator=(const Alarm&) = delete;
    ~Alarm() {
        const itimerval off{};
        ::setitimer(ITIMER_REAL, &off, nullptr);
        ::pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
        ::sigaction(SIGALRM, &before_, nullptr);
    }
    [[nodiscard]] static bool hasRung() { return rung != 0; }

private:
    struct sigaction before_ {};
    sigset_t mask_{};
};

std::string holder(const platform::PrivateFolder& folder, const std::string& name) {
    const auto number = folder.read(name);
    if (!number || number->empty()) {
        return "another process";
    }
    auto words = files::read("/proc/" + *number + "/cmdline");
    std::string line = words ? *words : std::string();
    std::replace(line.begin(), line.end(), '\0', ' ');
    return "process " + *number + (line.empty() ? "" : ": " + line);
}

} // namespace

void FileLock::noteHolder() const {
    const std::string number = std::to_string(::getpid());
    static_cast<void>(!::ftruncate(file_, 0));
    static_cast<void>(!::pwrite(file_, number.data(), number.size(), 0));
}

Result<FileLock> FileLock::take(const platform::PrivateFolder& folder, const std::string& name,
                                Kind kind) {
    FileLock lock(openLock(folder, name));
    const int operation = kind == Kind::shared ? LOCK_SH : LOCK_EX;
    const std::string path = folder.path() + "/" + name;
    const Alarm alarm(lockLimit);
    while (lock.file_ >= 0) {
        if (::flock(lock.file_, operation) == 0) {
            if (!lock.isCurrent()) {
                lock = FileLock(openLock(folder, name));
                continue;
            }
            if (kind == Kind::exclusive) {
                lock.noteHolder();
            }
            return lock;
        }
        if (errno == EINTR && alarm.hasRung()) {
            return failure(path + " is held by " + holder(folder, name));
        }
        if (errno != EINTR) {
            break;
        }
    }
    return failure(path + ": " + std::system_category().message(errno));
}

std::optional<FileLock> FileLock::tryExclusive(const platform::PrivateFolder& folder,
                                               const std::string& name) {
    FileLock lock(openLock(folder, name));
    if (lock.file_ < 0 || ::flock(lock.file_, LOCK_EX | LOCK_NB) != 0 || !lock.isCurrent()) {
        return std::nullopt;
    }
    return lock;
}

bool FileLock::isCurrent() const {
    struct stat found {};
    return ::fstat(file_, &found) == 0 && found.st_nlink > 0;
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
