#include "base/system_calls.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace varnhold::files {

int renameNew(const char* from, const char* to) {
    const int result = ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
    if (result != 0 &&
        errno == EINVAL) { // which it says of flags that the file system doesn't know
        errno = ENOSYS;
    }
    return result;
}

int reserveRoom(int file, std::uint64_t size) {
    return ::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size));
}

int makePipe(int* ends) {
    return ::pipe2(ends, O_CLOEXEC);
}

} // namespace varnhold::files
