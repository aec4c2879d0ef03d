#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include <mach-o/dyld.h>
#include <sys/event.h>
#include <sys/stdio.h>

int renamex_np(const char* from, const char* to, unsigned flags) {
    return ::renameat2(AT_FDCWD, from, AT_FDCWD, to, flags == RENAME_EXCL ? RENAME_NOREPLACE : 0);
}

int _NSGetExecutablePath(char* buffer, unsigned* size) {
    char path[4096];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path - 1);
    if (length < 0 || *size <= static_cast<unsigned>(length)) {
        *size = static_cast<unsigned>(length < 0 ? 0 : length) + 1;
        return -1;
    }
    path[length] = 0;
    std::memcpy(buffer, path, static_cast<std::size_t>(length) + 1);
    return 0;
}

// There is none to be had, as where a Mac has no descriptor left.
int kqueue() {
    errno = EMFILE;
    return -1;
}

int kevent(int, const struct kevent*, int, struct kevent*, int, const timespec*) {
    errno = EBADF;
    return -1;
}
