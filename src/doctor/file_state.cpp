#include "doctor/file_state.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace varnhold::doctor {

namespace {

std::string reasonOf(int error) {
    return std::system_category().message(error);
}

// Reads to the end, or to one byte beyond the limit.
FileState readAll(const std::string& path, FileState state) {
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (file < 0) {
        state.kind = FileState::Kind::unreadable;
        state.what = reasonOf(errno);
        return state;
    }
    state.kind = FileState::Kind::read;
    constexpr std::uint64_t mostAtOnce = std::uint64_t{1} << 20U;
    const auto step = static_cast<std::size_t>(std::min(state.size + 1, mostAtOnce));
    while (state.content.size() <= largestFile) {
        const std::size_t before = state.content.size();
        state.content.resize(before + step);
        const ssize_t got = ::read(file, state.content.data() + before, step);
        state.content.resize(before + static_cast<std::size_t>(got > 0 ? got : 0));
        if (got < 0 && errno != EINTR) {
            state.kind = FileState::Kind::unreadable;
            state.what = reasonOf(errno);
            break;
        }
        if (got == 0) {
            break;
        }
    }
    ::close(file);
    if (state.content.size() > largestFile) { // it has grown since it was looked at
        state.kind = FileState::Kind::tooLarge;
    }
    return state;
}

} // namespace

std::string kindInWords(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return "a folder";
    case S_IFIFO:
        return "a named pipe";
    case S_IFSOCK:
        return "a socket";
    case S_IFCHR:
    case S_IFBLK:
        return "a device";
    default:
        return "a file";
    }
}

FileState fileStateOf(const std::string& path) {
    FileState state;
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0) {
        const int error = errno;
        if (error != ENOENT && error != ENOTDIR) {
            state.kind = FileState::Kind::unreadable;
            state.what = reasonOf(error);
        } else if (::lstat(path.c_str(), &found) == 0) {
            state.kind = FileState::Kind::danglingLink;
        }
        return state;
    }
    state.size = static_cast<std::uint64_t>(found.st_size);
    state.changed = std::chrono::system_clock::from_time_t(found.st_mtime);
    state.writable = ::access(path.c_str(), W_OK) == 0;
    if (!S_ISREG(found.st_mode)) {
        state.kind = FileState::Kind::notRegular;
        state.what = kindInWords(found.st_mode);
        return state;
    }
    if (state.size > largestFile) {
        state.kind = FileState::Kind::tooLarge;
        return state;
    }
    return readAll(path, std::move(state));
}

bool othersCanRead(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr),
                                                           &std::free);
    struct stat found {};
    if (!real || ::stat(real.get(), &found) != 0 || (found.st_mode & S_IROTH) == 0) {
        return false;
    }
    std::string folder(real.get());
    while (true) {
        folder.resize(folder.rfind('/'));
        const std::string name = folder.empty() ? "/" : folder;
        if (::stat(name.c_str(), &found) != 0 || (found.st_mode & S_IXOTH) == 0) {
            return false;
        }
        if (folder.empty()) {
            return true;
        }
    }
}

} // namespace varnhold::doctor
