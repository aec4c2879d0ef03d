#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <system_error>

#include "base/descriptor.h"
#include "base/files.h"
#include "base/system_calls.h"

namespace varnhold::files {

namespace {

namespace fs = std::filesystem;

Result<void> done(const std::error_code& error, const std::string& path) {
    return error ? failure(path + ": " + error.message()) : Result<void>();
}

Result<void> synced(const Descriptor& file, const std::string& path) {
    // Some file systems can't sync (EINVAL); what was written stands all the same.
    if (::fsync(file.get()) != 0 && errno != EINVAL && errno != EROFS) {
        return failure(describe(path, errno));
    }
    return {};
}

Result<void> syncFolder(const std::string& path) {
    const Descriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.valid() ? synced(folder, path) : failure(describe(path, errno));
}

Result<void> copyContent(const Descriptor& source, const std::string& from,
                         const Descriptor& target, const std::string& to) {
    constexpr std::uint64_t atOnce = 1 << 20;
    for (std::uint64_t offset = 0;;) {
        const Result<std::string> piece = readFrom(source, from, atOnce);
        if (!piece || piece->empty()) {
            return piece ? Result<void>() : failure(piece.error());
        }
        if (Result<void> written = writeAt(target, offset, *piece, to); !written) {
            return written;
        }
        offset += piece->size();
    }
}

Result<void> copyFile(const std::string& from, const std::string& to) {
    const Descriptor source(
        ::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    struct stat found {};
    if (!source.valid() || ::fstat(source.get(), &found) != 0) {
        return failure(describe(from, errno));
    }
    if (!S_ISREG(found.st_mode)) {
        return failure(from + ": not a plain file");
    }
    const mode_t mode = found.st_mode & 07777U;
    const Descriptor target(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!target.valid() || ::fchmod(target.get(), mode) != 0) {
        return failure(describe(to, errno));
    }
    return copyContent(source, from, target, to).and_then([&] { return synced(target, to); });
}

Result<void> copyTree(const fs::path& from, const fs::path& to);

Result<void> copyFolder(const fs::path& from, const fs::path& to) {
    std::error_code error;
    fs::create_directory(to, error);
    if (error) {
        return done(error, to);
    }
    for (fs::directory_iterator each(from, error), end; !error && each != end;
         each.increment(error)) {
        if (Result<void> copied = copyTree(each->path(), to / each->path().filename()); !copied) {
            return copied;
        }
    }
    if (!error) {
        fs::permissions(to, fs::status(from, error).permissions(), error); // last: it may forbid us
    }
    return done(error, from).and_then([&] { return syncFolder(to); });
}

Result<void> copyTree(const fs::path& from, const fs::path& to) {
    std::error_code error;
    const fs::file_status found = fs::symlink_status(from, error);
    if (fs::is_directory(found)) {
        return copyFolder(from, to);
    }
    if (fs::is_symlink(found)) {
        fs::copy_symlink(from, to, error);
        return done(error, from);
    }
    return copyFile(from, to);
}

// What stands under the target's name stays, also what came there a moment ago.
Result<void> nameFinished(const std::string& temporary, const std::string& name) {
    if (renameNew(temporary.c_str(), name.c_str()) == 0) {
        return {};
    }
    if (errno != ENOSYS) {
        return failure(describe(name, errno));
    }
    // A file system that can't promise it
    if (attributesSize(name)) {
        return failure(describe(name, EEXIST));
    }
    return ::rename(temporary.c_str(), name.c_str()) == 0 ? Result<void>()
                                                          : failure(describe(name, errno));
}

} // namespace

Result<void> copyItem(const std::string& from, const std::string& to) {
    if (attributesSize(to)) {
        return failure(describe(to, EEXIST));
    }
    const std::size_t nameStart = to.rfind('/') + 1; // npos + 1 is 0: a bare name
    const std::string folder = nameStart > 0 ? to.substr(0, nameStart) : ".";
    const std::string temporary =
        to.substr(0, nameStart) + "." + to.substr(nameStart) + ".unfinished";
    std::error_code ignored;
    fs::remove_all(temporary, ignored); // of a copy that was cut short
    Result<void> copied =
        copyTree(from, temporary).and_then([&] { return nameFinished(temporary, to); });
    if (!copied) {
        fs::remove_all(temporary, ignored);
        return copied;
    }
    return syncFolder(folder);
}

} // namespace varnhold::files
