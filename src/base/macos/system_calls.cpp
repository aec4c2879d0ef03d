#include "base/system_calls.h"

#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <sys/stdio.h>
#include <unistd.h>

namespace varnhold::files {

int renameNew(const char* from, const char* to) {
    const int result = ::renamex_np(from, to, RENAME_EXCL);
    if (result != 0 && errno == ENOTSUP) {
        errno = ENOSYS;
    }
    return result;
}

// Its file system writes nothing in place, so that room which is kept would serve nobody.
int reserveRoom(int, std::uint64_t) {
    errno = ENOTSUP;
    return -1;
}

// Between the two steps another thread may start a child, which then keeps an end open for as long
// as it runs. There is no single step here.
int makePipe(int* ends) {
    if (::pipe(ends) != 0) {
        return -1;
    }
    ::fcntl(ends[0], F_SETFD, FD_CLOEXEC);
    ::fcntl(ends[1], F_SETFD, FD_CLOEXEC);
    return 0;
}

} // namespace varnhold::files
