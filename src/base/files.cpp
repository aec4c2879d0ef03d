#include "base/files.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace varnhold::files {

namespace {

namespace fs = std::filesystem;

constexpr mode_t newFileMode = 0666; // the user's umask takes its share

std::string describe(const std::string& path, int error) {
    return path + ": " + std::system_category().message(error);
}

// Closes on every way out; the few callers that care about close errors have synced before.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) {
            ::close(number_);
        }
    }
    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] bool valid() const { return number_ >= 0; }

private:
    int number_;
};

// All there is, but no more than `limit` bytes: a file may grow while it is read.
Result<std::string> readFrom(const Descriptor& file, const std::string& path,
                             std::uint64_t limit = std::numeric_limits<std::uint64_t>::max()) {
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

Result<void> writeTo(const Descriptor& file, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const ssize_t done = ::write(file.get(), content.data(), content.size());
        if (done >= 0) {
            content.remove_prefix(static_cast<std::size_t>(done));
        } else if (errno != EINTR) {
            return failure(describe(path, errno));
        }
    }
    // Some file systems can't sync (EINVAL); what was written stands all the same.
    if (::fsync(file.get()) != 0 && errno != EINVAL && errno != EROFS) {
        return failure(describe(path, errno));
    }
    return {};
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
    return writeTo(file, content, path);
}

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

Result<std::string> read(const std::string& path) {
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.valid()) {
        return failure(describe(path, errno));
    }
    return readFrom(file, path);
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

Result<void> writeInPlace(const std::string& path, std::string_view content) {
    const Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, newFileMode));
    if (!file.valid()) {
        return failure(describe(path, errno));
    }
    return writeTo(file, content, path);
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

Result<void> createDirectories(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    if (!isDirectory(path)) {
        return failure(path + ": " + (error ? error.message() : "not a folder"));
    }
    return {};
}

Result<void> copyItem(const std::string& from, const std::string& to) {
    if (attributesSize(to)) {
        return failure(describe(to, EEXIST));
    }
    std::error_code error;
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::copy_symlinks, error);
    if (error) {
        return failure(from + ": " + error.message());
    }
    return {};
}

} // namespace varnhold::files
