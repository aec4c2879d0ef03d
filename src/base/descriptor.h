#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unistd.h>

#include "base/result.h"

// What the functions of base/files.h are made of. Any thread, each descriptor on one at a time.
namespace varnhold::files {

// An open file, closed on every way out.
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

// "PATH: what errno means".
[[nodiscard]] std::string describe(const std::string& path, int error);

// Size of a plain file in bytes; a failure for anything else, such as a pipe or a folder.
[[nodiscard]] Result<std::uint64_t> plainFileSize(const Descriptor& file, const std::string& path);

// All from where the descriptor stands, but no more than `limit` bytes: a file may grow while it is
// read.
[[nodiscard]] Result<std::string> readFrom(const Descriptor& file, const std::string& path,
                                           std::uint64_t limit);

// A failure if the process may not give this size in bytes to a file: were it to try, the system
// would end it.
[[nodiscard]] Result<void> allowed(std::uint64_t size, const std::string& path);

// All of `content` from `offset` in bytes on, if a file may be as large.
[[nodiscard]] Result<void> writeAt(const Descriptor& file, std::uint64_t offset,
                                   std::string_view content, const std::string& path);

// Has a file system across a network tell what it would otherwise tell at the last close only, such
// as that there was no room. Doesn't wait for a disk.
[[nodiscard]] Result<void> flush(const Descriptor& file, const std::string& path);

} // namespace varnhold::files
