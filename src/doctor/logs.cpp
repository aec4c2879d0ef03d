#include "doctor/logs.h"

#include <algorithm>
#include <cstdint>
#include <sys/stat.h>

#include "base/files.h"
#include "base/text.h"
#include "lifecycle/launch_agent.h"

namespace varnhold::doctor {

namespace {

constexpr std::uint64_t tailSize = 4096; // bytes
constexpr std::size_t mostLines = 4;

std::vector<std::string> lastLines(const std::string& path) {
    const Result<std::string> tail = files::readTail(path, tailSize);
    std::vector<std::string> lines;
    if (!tail) {
        return lines;
    }
    const auto all = text::split(*tail, '\n');
    // A tail that is cut begins in the middle of a line, and maybe of a secret.
    const std::size_t first = tail->size() < tailSize ? 0 : 1;
    for (std::size_t i = all.size(); i > first && lines.size() < mostLines; --i) {
        if (!text::trim(all[i - 1], " \t\r").empty()) {
            lines.emplace_back(all[i - 1]);
        }
    }
    std::reverse(lines.begin(), lines.end());
    return lines;
}

} // namespace

std::vector<std::string> lastWords(const std::string& role) {
    std::vector<std::string> lines = lastLines(errorLogPath(role));
    return lines.empty() ? lastLines(logPath(role)) : lines;
}

std::optional<std::chrono::system_clock::time_point> lastWritten(const std::string& role) {
    std::optional<std::chrono::system_clock::time_point> last;
    for (const std::string& path : {logPath(role), errorLogPath(role)}) {
        struct stat found {};
        if (::stat(path.c_str(), &found) == 0) {
            last = std::max(last,
                            std::optional(std::chrono::system_clock::from_time_t(found.st_mtime)));
        }
    }
    return last;
}

} // namespace varnhold::doctor
