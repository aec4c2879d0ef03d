#include <cstdint>
#include <filesystem>
#include <mach-o/dyld.h>
#include <optional>
#include <string>
#include <sys/event.h>
#include <system_error>
#include <unistd.h>

#include "platform/executable.h"
#include "platform/orphan_sweep.h"
#include "platform/terminal.h"

namespace varnhold::platform {

std::string executablePath() {
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size); // tells the size it needs
    std::string path(size, '\0');
    if (_NSGetExecutablePath(path.data(), &size) != 0) {
        return {};
    }
    std::error_code error;
    const auto resolved = std::filesystem::canonical(path.c_str(), error);
    return error ? std::string(path.c_str()) : resolved.string();
}

Layout systemLayout(const std::string& executable) {
    return macLayout(executable);
}

int exitDescriptor(pid_t child) {
    const int queue = ::kqueue(); // not inherited by children
    struct kevent end {};
    EV_SET(&end, child, EVFILT_PROC, EV_ADD, NOTE_EXIT, 0, nullptr);
    if (queue >= 0 && ::kevent(queue, &end, 1, nullptr, 0, nullptr) != 0) {
        ::close(queue);
        return -1;
    }
    return queue;
}

std::string systemOrphanSweep() {
    return macOrphanSweep();
}

std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                    const std::string& argument) {
    return macTerminalRequest(script, argument);
}

} // namespace varnhold::platform
