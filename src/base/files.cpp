#include "base/files.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/descriptor.h"

namespace varnhold::files {

namespace fs = std::filesystem;

namespace {

// More than one of the seconds that files are dated with.
constexpr std::int64_t untilSettled = 2;

} // namespace

bool exists(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0;
}

bool isDirectory(const std::string& path) {
    struct stat found {};
    return ::stat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode);
}

std::optional<std::uint64_t> attributesSize(const std::string& path) {
    struct stat found {};
    if (::lstat(path.c_str(), &found) != 0) {
        return std::nullopt;
    }
    return static_cast<std::uint64_t>(found.st_size);
}

std::optional<Stamp> stampOf(const std::string& path) {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
        return std::nullopt;
    }
    const std::int64_t changed = found.st_ctime; // nobody can set it back
    if (changed + untilSettled > std::time(nullptr)) {
        return std::nullopt;
    }
    return Stamp{.device = static_cast<std::uint64_t>(found.st_dev), // signed on a Mac
                 .number = found.st_ino,
                 .size = static_cast<std::uint64_t>(found.st_size),
                 .changed = changed};
}

Result<std::string> read(const std::string& path) {
    // Opening a pipe would wait for somebody to write to it.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.valid()) {
        return failure(describe(path, errno));
    }
    const Result<std::uint64_t> size = plainFileSize(file, path);
    if (!size || *size > largestFile) {
        return failure(size ? describe(path, EFBIG) : size.error());
    }
    Result<std::string> content = readFrom(file, path, largestFile + 1); // it may have grown since
    if (content && content->size() > largestFile) {
        return failure(describe(path, EFBIG));
    }
    return content;
}

Result<std::string> readTail(const std::string& path, std::uint64_t limit) {
    // Anybody may have put a pipe there, and nobody may ever write to it.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.valid()) {
        return failure(describe(path, errno));
    }
    const off_t end = ::lseek(file.get(), 0, SEEK_END);
    const std::uint64_t size = end > 0 ? static_cast<std::uint64_t>(end) : 0;
    const std::uint64_t start = size > limit ? size - limit : 0;
    if (::lseek(file.get(), static_cast<off_t>(start), SEEK_SET) < 0 && errno != ESPIPE) {
        return failure(describe(path, errno));
    }
    return readFrom(file, path, limit);
}

Result<void> createDirectories(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (!isDirectory(path)) {
        return failure(path + ": " + (error ? error.message() : "not a folder"));
    }
    return {};
}

} // namespace varnhold::files
