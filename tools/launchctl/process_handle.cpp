#include "launchctl/process_handle.h"

#include <csignal>
#include <unistd.h>

extern "C" { // this header of glibc 2.36 doesn't say so itself
#include <sys/pidfd.h>
}

namespace varnhold::services {

ProcessHandle::ProcessHandle(pid_t process) : handle_(::pidfd_open(process, 0)) {}

ProcessHandle::~ProcessHandle() {
    if (handle_ >= 0) {
        ::close(handle_);
    }
}

void ProcessHandle::kill() const {
    ::pidfd_send_signal(handle_, SIGKILL, nullptr, 0);
}

} // namespace varnhold::services
