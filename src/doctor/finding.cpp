#include "doctor/finding.h"

#include <algorithm>

namespace varnhold::doctor {

std::string_view name(Level level) {
    switch (level) {
    case Level::note:
        return "note";
    case Level::warning:
        return "warning";
    case Level::fault:
        break;
    }
    return "fault";
}

std::optional<Level> worst(const Section& section) {
    std::optional<Level> level;
    for (const Finding& finding : section.findings) {
        level = std::max(level, std::optional(finding.level));
    }
    return level;
}

std::optional<Level> worst(const Report& report) {
    std::optional<Level> level;
    for (const Section& section : report.sections) {
        level = std::max(level, worst(section));
    }
    return level;
}

int exitCode(const Report& report) {
    const std::optional<Level> level = worst(report);
    if (level == Level::fault) {
        return 2;
    }
    return level == Level::warning ? 1 : 0;
}

std::string counted(std::size_t count, std::string_view one, std::string_view several) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : several);
}

} // namespace varnhold::doctor
