#include "failing_disk.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace varnhold::testing {

namespace {

FailingDisk* current = nullptr;

int refuse(int error) {
    errno = error;
    return -1;
}

} // namespace

FailingDisk::FailingDisk() {
    current = this;
}

FailingDisk::~FailingDisk() {
    current = nullptr;
}

bool FailingDisk::refuses() {
    if (failing != calls_++) {
        return false;
    }
    errno = error;
    return true;
}

bool FailingDisk::tells() {
    if (owes_ && takesNothingOnceTold) {
        room = 0;
    }
    return std::exchange(owes_, false);
}

} // namespace varnhold::testing

using varnhold::testing::current;
using varnhold::testing::refuse;

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the linker's own names

int __real_close(int file);
int __real_fallocate(int file, int mode, off_t offset, off_t length);
int __real_fsync(int file);
int __real_ftruncate(int file, off_t length);
ssize_t __real_pwrite(int file, const void* content, size_t size, off_t offset);
int __real_renameat2(int oldFolder, const char* from, int newFolder, const char* to,
                     unsigned flags);

// A close that fails has closed all the same.
int __wrap_close(int file) {
    const bool refused = current != nullptr && current->refuses();
    const int error = errno;
    const bool late = current != nullptr && current->tells();
    const int closed = __real_close(file);
    return refused ? refuse(error) : late ? refuse(EDQUOT) : closed;
}

int __wrap_fallocate(int file, int mode, off_t offset, off_t length) {
    if (current != nullptr) {
        if (!current->reserves) {
            return refuse(EOPNOTSUPP);
        }
        if (current->refuses()) {
            return -1;
        }
        if (current->room && static_cast<std::uint64_t>(offset + length) > *current->room) {
            return refuse(ENOSPC);
        }
    }
    return __real_fallocate(file, mode, offset, length);
}

int __wrap_fsync(int file) {
    if (current != nullptr) {
        current->countSync();
        if (current->refuses()) {
            return -1;
        }
    }
    return __real_fsync(file);
}

int __wrap_ftruncate(int file, off_t length) {
    return current != nullptr && current->refuses() ? -1 : __real_ftruncate(file, length);
}

ssize_t __wrap_pwrite(int file, const void* content, size_t size, off_t offset) {
    if (current != nullptr) {
        if (current->refuses()) {
            return -1;
        }
        if (current->room) {
            const auto start = static_cast<std::uint64_t>(offset);
            if (current->tellsLate && start + size > *current->room) {
                current->owe();
                const size_t kept = start < *current->room ? *current->room - start : 0;
                return __real_pwrite(file, content, kept, offset) < 0 ? -1
                                                                      : static_cast<ssize_t>(size);
            }
            if (start >= *current->room) {
                return refuse(ENOSPC);
            }
            size = std::min(size, static_cast<size_t>(*current->room - start));
        }
        size = std::min(size, static_cast<size_t>(current->atOnce.value_or(size)));
    }
    return __real_pwrite(file, content, size, offset);
}

int __wrap_renameat2(int oldFolder, const char* from, int newFolder, const char* to,
                     unsigned flags) {
    if (current != nullptr) {
        if (!current->renamesExclusively) {
            return refuse(EINVAL);
        }
        if (current->refuses()) {
            return -1;
        }
    }
    return __real_renameat2(oldFolder, from, newFolder, to, flags);
}

// NOLINTEND(bugprone-reserved-identifier)

} // extern "C"
