#include <filesystem>

#include "base/files.h"
#include "platform/executable.h"
#include "platform/terminal.h"

namespace varnhold::platform {

std::string executablePath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

Layout systemLayout(const std::string& executable) {
    return linuxLayout(executable);
}

std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                    const std::string& argument) {
    return linuxTerminalRequest(script, argument, files::exists);
}

} // namespace varnhold::platform
