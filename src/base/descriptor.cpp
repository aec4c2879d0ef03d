#include "base/descriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <system_error>

namespace varnhold::files {

std::string describe(const std::string& path, int error) {
    return path + ": " + std::system_category().message(error);
}

Result<std::uint64_t> plainFileSize(const Descriptor& file, const std::string& path) {
    struct stat found {};
    if (::fstat(file.get(), &found) != 0) {
        return failure(describe(path, errno));
    }
    if (!S_ISREG(found.st_mode)) {
        return failure(path + ": not a plain file");
    }
    return static_cast<std::uint64_t>(found.st_size);
}

Result<std::string> readFrom(const Descriptor& file, const std::string& path, std::uint64_t limit) {
    std::string content;
    char buffer[65536];
    while (content.size() < limit) {
        const std::uint64_t wanted = std::min<std::uint64_t>(sizeof buffer, limit - content.size());
        const ssize_t got = ::read(file.get(), buffer, static_cast<std::size_t>(wanted));
        if (got == 0) {
            break;
        }
        if (got > 0) {
            content.append(buffer, static_cast<std::size_t>(got));
        } else if (errno != EINTR) {
            return failure(describe(path, errno));
        }
    }
    return content;
}

Result<void> allowed(std::uint64_t size, const std::string& path) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_FSIZE, &limit) == 0 && size > limit.rlim_cur) {
        return failure(describe(path, EFBIG));
    }
    return {};
}

Result<void> writeAt(const Descriptor& file, std::uint64_t offset, std::string_view content,
                     const std::string& path) {
    if (Result<void> fits = allowed(offset + content.size(), path); !fits) {
        return fits;
    }
    while (!content.empty()) {
        const ssize_t done =
            ::pwrite(file.get(), content.data(), content.size(), static_cast<off_t>(offset));
        if (done >= 0) {
            content.remove_prefix(static_cast<std::size_t>(done));
            offset += static_cast<std::uint64_t>(done);
        } else if (errno != EINTR) {
            return failure(describe(path, errno));
        }
    }
    return {};
}

Result<void> flush(const Descriptor& file, const std::string& path) {
    const int copy = ::fcntl(file.get(), F_DUPFD_CLOEXEC, 0);
    if (copy >= 0 && ::close(copy) != 0 && errno != EINTR) {
        return failure(describe(path, errno));
    }
    return {};
}

} // namespace varnhold::files
