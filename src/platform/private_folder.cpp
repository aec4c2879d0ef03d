#include "platform/private_folder.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace varnhold::platform {

namespace {

constexpr mode_t privateMode = 0700;
constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

tl::unexpected<std::string> refuse(const std::string& path, int error) {
    return failure(path + ": " + std::system_category().message(error));
}

bool isOurFolder(int folder, mode_t forbidden) {
    struct stat found {};
    return ::fstat(folder, &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == ::geteuid() &&
           (found.st_mode & forbidden) == 0;
}

Result<void> writeAll(int file, std::string_view content, const std::string& path) {
    while (!content.empty()) {
        const ssize_t done = ::write(file, content.data(), content.size());
        if (done >= 0) {
            content.remove_prefix(static_cast<std::size_t>(done));
        } else if (errno != EINTR) {
            return refuse(path, errno);
        }
    }
    return {};
}

Result<std::string> readAll(int file, const std::string& path) {
    struct stat found {};
    if (::fstat(file, &found) != 0) {
        return refuse(path, errno);
    }
    if (!S_ISREG(found.st_mode)) {
        return failure(path + ": not a file");
    }
    std::string content;
    char buffer[16384];
    while (true) {
        const ssize_t got = ::read(file, buffer, sizeof buffer);
        if (got == 0) {
            return content;
        }
        if (got > 0) {
            content.append(buffer, static_cast<std::size_t>(got));
        } else if (errno != EINTR) {
            return refuse(path, errno);
        }
    }
}

// True as soon as the test says so.
bool anyNameIn(int folder, const std::function<bool(std::string_view name)>& test) {
    // A descriptor of its own, so that a second look begins at the beginning again.
    const int own = ::openat(folder, ".", folderFlags);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(own >= 0 ? ::fdopendir(own) : nullptr,
                                                      &::closedir);
    if (!entries) {
        if (own >= 0) {
            ::close(own);
        }
        return false;
    }
    while (const dirent* entry = ::readdir(entries.get())) { // NOLINT(concurrency-mt-unsafe)
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0 &&
            test(entry->d_name)) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> namesIn(int folder) {
    std::vector<std::string> names;
    static_cast<void>(anyNameIn(folder, [&names](std::string_view name) {
        names.emplace_back(name);
        return false;
    }));
    return names;
}

// Each of them; one that can't be made shows when the next is to be made in it.
void makeParents(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        ::mkdir(path.substr(0, slash).c_str(), privateMode);
    }
}

} // namespace

Result<std::optional<PrivateFolder>> PrivateFolder::findAt(int parent, const std::string& name,
                                                           const std::string& path) {
    PrivateFolder folder(::openat(parent, name.c_str(), folderFlags), path);
    if (folder.folder_ < 0 && errno == ENOENT) {
        return std::optional<PrivateFolder>();
    }
    const bool isOther = folder.folder_ < 0 && (errno == ELOOP || errno == ENOTDIR);
    if (isOther || (folder.folder_ >= 0 && !isOurFolder(folder.folder_, 0077))) {
        return failure(path + ": not a private folder of this user");
    }
    if (folder.folder_ < 0) {
        return refuse(path, errno);
    }
    return std::optional(std::move(folder));
}

Result<std::optional<PrivateFolder>> PrivateFolder::find(const std::string& path) {
    return findAt(AT_FDCWD, path, path);
}

Result<PrivateFolder> PrivateFolder::make(const std::string& path) {
    makeParents(path);
    if (::mkdir(path.c_str(), privateMode) != 0 && errno != EEXIST) {
        return refuse(path, errno);
    }
    return find(path).and_then([&](auto found) -> Result<PrivateFolder> {
        return found ? Result<PrivateFolder>(*std::move(found)) : refuse(path, ENOENT);
    });
}

Result<std::optional<PrivateFolder>> PrivateFolder::findIn(const std::string& name) const {
    return findAt(folder_, name, path_ + "/" + name);
}

Result<PrivateFolder> PrivateFolder::makeIn(const std::string& name) const {
    const std::string path = path_ + "/" + name;
    if (::mkdirat(folder_, name.c_str(), privateMode) != 0 && errno != EEXIST) {
        return refuse(path, errno);
    }
    return findIn(name).and_then([&](auto found) -> Result<PrivateFolder> {
        return found ? Result<PrivateFolder>(*std::move(found)) : refuse(path, ENOENT);
    });
}

PrivateFolder::PrivateFolder(PrivateFolder&& other) noexcept
    : folder_(std::exchange(other.folder_, -1)), path_(std::move(other.path_)) {}

PrivateFolder& PrivateFolder::operator=(PrivateFolder&& other) noexcept {
    std::swap(folder_, other.folder_);
    std::swap(path_, other.path_);
    return *this;
}

PrivateFolder::~PrivateFolder() {
    if (folder_ >= 0) {
        ::close(folder_);
    }
}

std::vector<std::string> PrivateFolder::names() const {
    return namesIn(folder_);
}

bool PrivateFolder::anyName(const std::function<bool(std::string_view name)>& test) const {
    return anyNameIn(folder_, test);
}

bool PrivateFolder::has(const std::string& name) const {
    struct stat found {};
    return ::fstatat(folder_, name.c_str(), &found, AT_SYMLINK_NOFOLLOW) == 0;
}

int PrivateFolder::open(const std::string& name, int flags, mode_t mode) const {
    return ::openat(folder_, name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode);
}

Result<std::string> PrivateFolder::read(const std::string& name) const {
    const std::string path = path_ + "/" + name;
    const int file = open(name, O_RDONLY | O_NONBLOCK); // or a pipe would keep us waiting
    if (file < 0) {
        return refuse(path, errno);
    }
    auto content = readAll(file, path);
    ::close(file);
    return content;
}

Result<void> PrivateFolder::write(const std::string& name, std::string_view content,
                                  mode_t mode) const {
    const std::string path = path_ + "/" + name;
    const int file = open(name, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK, mode);
    if (file < 0) {
        return refuse(path, errno);
    }
    auto written = writeAll(file, content, path);
    if (written && ::fchmod(file, mode) != 0) { // a mask that takes more must not count
        written = refuse(path, errno);
    }
    ::close(file);
    return written;
}

bool PrivateFolder::remove(const std::string& name) const {
    return ::unlinkat(folder_, name.c_str(), 0) == 0 || errno == ENOENT;
}

bool PrivateFolder::removeFolder(const std::string& name) const {
    return ::unlinkat(folder_, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT;
}

bool PrivateFolder::removeFolderOfFiles(const std::string& name) const {
    const int folder = ::openat(folder_, name.c_str(), folderFlags);
    if (folder < 0) {
        return errno == ENOENT;
    }
    if (isOurFolder(folder, 0)) {
        for (const std::string& file : namesIn(folder)) {
            ::unlinkat(folder, file.c_str(), 0);
        }
    }
    ::close(folder);
    return removeFolder(name);
}

} // namespace varnhold::platform
