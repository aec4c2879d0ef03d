#include "launchctl/unit_name.h"

#include "base/text.h"

namespace varnhold::services {

namespace {

constexpr std::string_view prefix = "varnhold-job-";
constexpr std::string_view suffix = ".service";
constexpr std::string_view fileEscape = "%";
constexpr std::string_view unitEscape = "\\x";

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    for (std::size_t found = text.find(from); found != std::string_view::npos;
         found = text.find(from)) {
        out += std::string(text.substr(0, found)) + std::string(to);
        text.remove_prefix(found + from.size());
    }
    return out + std::string(text);
}

std::string unitWith(const JobName& name, const std::string& generation) {
    return std::string(prefix) + replaced(name.text(), fileEscape, unitEscape) + generation +
           std::string(suffix);
}

} // namespace

std::string unitOfJob(const JobName& name, unsigned generation) {
    return unitWith(name, generation == 0 ? "" : "@" + std::to_string(generation));
}

std::optional<JobName> jobOfUnit(std::string_view unit) {
    if (!unit.starts_with(prefix) || !unit.ends_with(suffix) ||
        unit.size() < prefix.size() + suffix.size()) {
        return std::nullopt;
    }
    unit.remove_prefix(prefix.size());
    unit.remove_suffix(suffix.size());
    const std::size_t at = unit.find('@');
    if (at != std::string_view::npos) {
        const auto generation = text::parseUnsigned(unit.substr(at + 1));
        if (!generation || *generation == 0) {
            return std::nullopt;
        }
        unit = unit.substr(0, at);
    }
    if (unit.find(fileEscape) != std::string_view::npos) {
        return std::nullopt;
    }
    return jobNamed(replaced(unit, unitEscape, fileEscape));
}

std::string patternOfGenerations(const JobName& name) {
    return unitWith(name, "@*");
}

} // namespace varnhold::services
