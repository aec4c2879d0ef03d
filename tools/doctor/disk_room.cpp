#include "disk_room.h"

#include <algorithm>
#include <cstdint>
#include <sys/statvfs.h>
#include <unistd.h>

#ifdef __linux__
#include <fcntl.h>
#include <sys/quota.h>
#include <sys/syscall.h>
#endif

namespace varnhold::doctor {

namespace {

std::optional<std::uint64_t> quotaLeft([[maybe_unused]] const std::string& folder) {
#if defined(__linux__) && defined(SYS_quotactl_fd)
    const int handle = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) {
        return std::nullopt;
    }
    struct dqblk quota {};
    const long done =
        ::syscall(SYS_quotactl_fd, handle, QCMD(Q_GETQUOTA, USRQUOTA), ::getuid(), &quota);
    ::close(handle);
    if (done == 0 && quota.dqb_bhardlimit > 0) {
        constexpr std::uint64_t quotaBlock = 1024;
        const std::uint64_t limit = quota.dqb_bhardlimit * quotaBlock;
        return limit - std::min<std::uint64_t>(limit, quota.dqb_curspace);
    }
#endif
    return std::nullopt;
}

} // namespace

std::optional<DiskRoom> diskRoomOf(const std::string& folder) {
    struct statvfs disk {};
    if (::statvfs(folder.c_str(), &disk) != 0) {
        return std::nullopt;
    }
    const auto blocks = ::geteuid() == 0 ? disk.f_bfree : disk.f_bavail;
    return DiskRoom{.freeBytes = std::uint64_t{blocks} * disk.f_frsize,
                    .quotaLeft = quotaLeft(folder),
                    // Some file systems make their names as they go and count none.
                    .outOfNames = disk.f_files > 0 && disk.f_favail == 0};
}

} // namespace varnhold::doctor
