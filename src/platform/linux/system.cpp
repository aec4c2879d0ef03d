#include <filesystem>
#include <optional>
#include <string>
#include <sys/syscall.h>
#include <system_error>
#include <unistd.h>

#include "base/files.h"
#include "platform/executable.h"
#include "platform/orphan_sweep.h"
#include "platform/terminal.h"

namespace varnhold::platform {

std::string executablePath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

Layout systemLayout(const std::string& executable) {
    return linuxLayout(executable);
}

int exitDescriptor(pid_t child) {
    return static_cast<int>(::syscall(SYS_pidfd_open, child, 0)); // close-on-exec by itself
}

std::string systemOrphanSweep() {
    return linuxOrphanSweep();
}

std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                    const std::string& argument) {
    return linuxTerminalRequest(script, argument, files::exists);
}

} // namespace varnhold::platform
