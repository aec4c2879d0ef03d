#include "platform/layout.h"

#include <string_view>

namespace varnhold::platform {

namespace {

constexpr std::string_view insideBundle = "/Contents/MacOS";
constexpr std::string_view ownFolder = "/libexec/varnhold"; // below a prefix

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

std::string prefixOf(const std::string& executable) {
    std::string folder = folderOf(executable);
    if (folder.ends_with(ownFolder)) {
        folder.resize(folder.size() - ownFolder.size());
        return folder;
    }
    return folderOf(folder);
}

} // namespace

Layout macLayout(const std::string& executable) {
    std::string bundle = folderOf(executable);
    if (bundle.ends_with(insideBundle)) {
        bundle.resize(bundle.size() - insideBundle.size());
    }
    return {bundle, "/bin/launchctl"};
}

Layout linuxLayout(const std::string& executable) {
    const std::string prefix = prefixOf(executable);
    return {prefix + "/lib/varnhold", prefix + std::string(ownFolder) + "/launchctl"};
}

std::string supervisorBehind(const std::string& executable) {
    return prefixOf(executable) + std::string(ownFolder) + "/supervisor";
}

} // namespace varnhold::platform
