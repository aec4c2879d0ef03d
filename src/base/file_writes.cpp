#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

#include "base/descriptor.h"
#include "base/files.h"
#include "base/system_calls.h"

namespace varnhold::files {

namespace {

namespace fs = std::filesystem;

constexpr mode_t newFileMode = 0666; // the user's umask takes its share

// Room for `size` bytes, without a change that a reader could see. Most file systems can promise
// it; of one that can't, the writes themselves will tell.
Result<void> reserve(const Descriptor& file, std::uint64_t size, const std::string& path) {
    while (size > 0 && reserveRoom(file.get(), size) != 0) {
        if (errno == ENOSPC || errno == EDQUOT) {
            return failure(describe(path, errno));
        }
        if (errno != EINTR) {
            break;
        }
    }
    return {};
}

Result<void> resize(const Descriptor& file, std::uint64_t size, const std::string& path) {
    if (::ftruncate(file.get(), static_cast<off_t>(size)) != 0) {
        return failure(describe(path, errno));
    }
    return {};
}

// What may need room comes first, while the old content is still whole: the part that goes beyond
// it. Only then is the old content written over, in room that the file has, and put back if that
// fails all the same. A longer old content is cut off last.
Result<void> replaceContent(const Descriptor& file, std::uint64_t oldSize, std::string_view content,
                            const std::string& path) {
    const auto shared = static_cast<std::size_t>(std::min<std::uint64_t>(oldSize, content.size()));
    const Result<std::string> old = readFrom(file, path, shared);
    if (!old || old->size() != shared) {
        return failure(old ? path + ": changed while it was read" : old.error());
    }
    Result<void> grown =
        allowed(content.size(), path)
            .and_then([&] { return reserve(file, content.size(), path); })
            .and_then([&] { return writeAt(file, shared, content.substr(shared), path); })
            .and_then([&] { return flush(file, path); });
    if (!grown) {
        static_cast<void>(resize(file, oldSize, path));
        return grown;
    }
    Result<void> written = writeAt(file, 0, content.substr(0, shared), path)
                               .and_then([&] { return flush(file, path); })
                               .and_then([&] { return resize(file, content.size(), path); });
    if (!written) {
        static_cast<void>(writeAt(file, 0, *old, path));
        static_cast<void>(resize(file, oldSize, path));
    }
    return written;
}

// Of a link, what it leads to.
void removeTarget(const std::string& path) {
    std::error_code error;
    const fs::path target = fs::canonical(path, error);
    if (!error) {
        fs::remove(target, error);
    }
}

// The name begins with a dot so that a program that watches the folder for the real name, or lists
// it without hidden files, isn't woken by the half-written one.
std::string temporaryName(const std::string& path) {
    static std::atomic<unsigned> counter = 0;
    const std::size_t nameStart = path.rfind('/') + 1; // npos + 1 is 0: a bare name
    return path.substr(0, nameStart) + "." + path.substr(nameStart) + "." +
           std::to_string(::getpid()) + "." + std::to_string(counter++);
}

// The mode of a plain file that is there, to be kept when another file takes its place.
std::optional<mode_t> existingMode(const std::string& path) {
    struct stat found {};
    if (::lstat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
        return std::nullopt;
    }
    return found.st_mode & 07777U;
}

Result<void> writeNew(const std::string& path, std::string_view content,
                      std::optional<mode_t> mode) {
    const Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode));
    if (!file.valid() || (mode && ::fchmod(file.get(), *mode) != 0)) {
        return failure(describe(path, errno));
    }
    return writeAt(file, 0, content, path).and_then([&] { return flush(file, path); });
}

} // namespace

Result<void> writeInPlace(const std::string& path, std::string_view content) {
    constexpr int way = O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY; // never waits for a pipe's end
    int opened = ::open(path.c_str(), way);
    const bool isNew = opened < 0 && errno == ENOENT;
    if (isNew) {
        opened = ::open(path.c_str(), way | O_CREAT, newFileMode);
    }
    const Descriptor file(opened);
    if (!file.valid()) {
        return failure(describe(path, errno));
    }
    Result<void> written = plainFileSize(file, path).and_then([&](std::uint64_t size) {
        return replaceContent(file, size, content, path);
    });
    if (!written && isNew) {
        removeTarget(path);
    }
    return written;
}

Result<void> writeAtomically(const std::string& path, std::string_view content) {
    const std::string temporary = temporaryName(path);
    Result<void> written = writeNew(temporary, content, existingMode(path));
    if (written && ::rename(temporary.c_str(), path.c_str()) != 0) {
        written = failure(describe(path, errno));
    }
    if (!written) {
        ::unlink(temporary.c_str());
    }
    return written;
}

} // namespace varnhold::files
