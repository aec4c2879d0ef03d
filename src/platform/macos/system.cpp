#include <filesystem>
#include <mach-o/dyld.h>
#include <string>

#include "platform/executable.h"
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

std::optional<ProcessRequest> systemTerminalRequest(const std::string& script,
                                                    const std::string& argument) {
    return macTerminalRequest(script, argument);
}

} // namespace varnhold::platform
