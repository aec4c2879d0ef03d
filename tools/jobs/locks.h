#pragma once

#include <optional>
#include <string>

#include "base/result.h"
#include "platform/private_folder.h"

namespace varnhold::services {

// A lock on a file, between processes (flock). The system frees it when its holder ends in any way.
class FileLock final {
public:
    enum class Kind { shared, exclusive };

    // Waits until the lock can be had, but no longer than ten seconds: its holder may have been
    // stopped. The reason then names him. The file is made if it is missing.
    [[nodiscard]] static Result<FileLock> take(const platform::PrivateFolder& folder,
                                               const std::string& name, Kind kind);
    // None if somebody else has it.
    [[nodiscard]] static std::optional<FileLock> tryExclusive(const platform::PrivateFolder& folder,
                                                              const std::string& name);

    // Whether the file still bears its name: its former holder may have taken it away.
    [[nodiscard]] bool isCurrent() const;

    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

private:
    explicit FileLock(int file) : file_(file) {}
    void noteHolder() const;

    int file_ = -1;
};

} // namespace varnhold::services
