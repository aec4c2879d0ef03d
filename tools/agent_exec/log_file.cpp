#include "agent_exec/log_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace varnhold::services {

namespace {

// Without O_NONBLOCK a pipe that nobody reads would keep the agent waiting for ever.
constexpr int way = O_WRONLY | O_APPEND | O_NOCTTY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC;
constexpr mode_t madeMode = 0600;

Result<int> makeLog(const std::string& path) {
    const int log = ::open(path.c_str(), way | O_CREAT | O_EXCL, madeMode);
    if (log < 0) {
        return failure(std::system_category().message(errno));
    }
    ::fchmod(log, madeMode); // a mask can only have taken more
    return log;
}

// Empty if it can be written to.
std::string objection(int log) {
    struct stat found {};
    if (::fstat(log, &found) != 0) {
        return std::system_category().message(errno);
    }
    if (S_ISCHR(found.st_mode)) { // /dev/null, say; nobody plants a device
        return {};
    }
    if (found.st_uid != ::geteuid()) {
        return "a file of another user";
    }
    return S_ISREG(found.st_mode) && found.st_nlink > 1 ? "a file that has other names too" : "";
}

Result<int> openOwnLog(const std::string& path) {
    const int log = ::open(path.c_str(), way);
    if (log < 0 && errno == ENOENT) {
        return makeLog(path);
    }
    if (log < 0) {
        return failure(errno == ELOOP ? "a link, which isn't followed"
                                      : std::system_category().message(errno));
    }
    if (const std::string reason = objection(log); !reason.empty()) {
        ::close(log);
        return failure(reason);
    }
    return log;
}

} // namespace

Result<int> openLog(const std::string& path) {
    auto log = openOwnLog(path);
    if (!log) {
        return failure(path + ": " + log.error());
    }
    ::fcntl(*log, F_SETFL, O_APPEND);
    return log;
}

} // namespace varnhold::services
