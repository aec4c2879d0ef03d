#pragma once

#include <cstdint>

// What systems call by different names. As system calls do, each gives 0, or -1 and sets errno.
// linux/ and macos/ implement them; any thread.
namespace varnhold::files {

// Renames; EEXIST if anything has the new name by then, ENOSYS where the file system can't promise
// that.
[[nodiscard]] int renameNew(const char* from, const char* to);

// Has the file system keep room for the first `size` bytes of an open file, without a change that a
// reader could see; ENOTSUP where it can't.
[[nodiscard]] int reserveRoom(int file, std::uint64_t size);

// A pipe, the end to read from first, which children don't inherit.
[[nodiscard]] int makePipe(int* ends);

} // namespace varnhold::files
