#include "process_start.h"

#include <ctime>
#include <string>
#include <unistd.h>

#include "base/files.h"
#include "base/text.h"

namespace varnhold::doctor {

// Of the process table's line only what stands behind the name counts: a name may hold anything.
std::optional<std::chrono::system_clock::time_point> startOfProcess(std::int64_t process) {
    constexpr std::size_t startColumn = 19; // counted from the state, which follows the name
    const auto line = files::read("/proc/" + std::to_string(process) + "/stat");
    const std::size_t name = line ? line->rfind(')') : std::string::npos;
    if (name == std::string::npos) {
        return std::nullopt;
    }
    const auto columns = text::columns(std::string_view(*line).substr(name + 1));
    const auto ticks =
        columns.size() > startColumn ? text::parseInteger(columns[startColumn]) : std::nullopt;
    timespec sinceBoot{};
    if (!ticks || ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0) {
        return std::nullopt;
    }
    const std::chrono::milliseconds now = std::chrono::seconds(sinceBoot.tv_sec) +
                                          std::chrono::duration_cast<std::chrono::milliseconds>(
                                              std::chrono::nanoseconds(sinceBoot.tv_nsec));
    const std::chrono::milliseconds start(*ticks * 1000 / ::sysconf(_SC_CLK_TCK));
    return std::chrono::system_clock::now() - (now - start);
}

} // namespace varnhold::doctor
