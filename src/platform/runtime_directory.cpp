#include "platform/runtime_directory.h"

#include <sys/stat.h>

namespace varnhold::platform {

namespace {

bool isOwnFolder(const std::string& path, std::uint32_t userId) {
    struct stat found {};
    return ::lstat(path.c_str(), &found) == 0 && S_ISDIR(found.st_mode) && found.st_uid == userId;
}

} // namespace

std::string runtimeDirectory(const char* xdgRuntimeDir, std::uint32_t userId) {
    if (xdgRuntimeDir != nullptr && *xdgRuntimeDir == '/') {
        return std::string(xdgRuntimeDir) + "/varnhold";
    }
    const std::string id = std::to_string(userId);
    const std::string ofLoginManager = "/run/user/" + id;
    if (isOwnFolder(ofLoginManager, userId)) {
        return ofLoginManager + "/varnhold";
    }
    return "/tmp/varnhold-" + id;
}

} // namespace varnhold::platform
