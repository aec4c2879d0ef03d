#include "base/paths.h"

#include <filesystem>
#include <system_error>

namespace varnhold::paths {

std::string_view lastComponent(std::string_view path) {
    const std::size_t end = path.find_last_not_of('/');
    if (end == std::string_view::npos) {
        return path.substr(0, path.empty() ? 0 : 1);
    }
    path = path.substr(0, end + 1);
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string_view extension(std::string_view path) {
    const std::string_view name = lastComponent(path);
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size()) {
        return {};
    }
    if (name.substr(0, dot).find_first_not_of('.') == std::string_view::npos) {
        return {};
    }
    const std::string_view found = name.substr(dot + 1);
    return found.find(' ') == std::string_view::npos ? found : std::string_view{};
}

std::string standardized(const std::string& path) {
    std::error_code error;
    std::filesystem::path clean = std::filesystem::canonical(path, error);
    if (error) {
        clean = std::filesystem::path(path).lexically_normal();
    }
    std::string out = clean.string();
    while (out.size() > 1 && out.back() == '/') {
        out.pop_back();
    }
    return out;
}

} // namespace varnhold::paths
