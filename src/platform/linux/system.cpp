#include <filesystem>

#include "platform/executable.h"

namespace varnhold::platform {

std::string executablePath() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

Layout systemLayout(const std::string& executable) {
    return linuxLayout(executable);
}

} // namespace varnhold::platform
