#include "platform/layout.h"

#include <string_view>

namespace varnhold::platform {

namespace {

constexpr std::string_view insideBundle = "/Contents/MacOS";

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
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
    const std::string prefix = folderOf(folderOf(executable));
    return {prefix + "/lib/varnhold", prefix + "/libexec/varnhold/launchctl"};
}

} // namespace varnhold::platform
