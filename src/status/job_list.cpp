#include "status/job_list.h"

#include "base/text.h"
#include "base/unicode.h"

namespace varnhold {

std::string_view indicator(DaemonStatus status) {
    switch (status) {
    case DaemonStatus::running:
        return "🟢";
    case DaemonStatus::stopped:
        return "⚪️";
    case DaemonStatus::crashed:
        return "🔴";
    }
    return "";
}

StatusMap parseJobList(std::string_view listing) {
    StatusMap statuses;
    if (!unicode::isValidUtf8(listing)) {
        return statuses;
    }
    for (const std::string_view line : text::split(listing, '\n')) {
        const auto columns = text::columns(line);
        if (columns.size() < 3) {
            continue;
        }
        const bool hasProcess = columns[0] != "-";
        const bool endedWell = columns[1] == "0";
        const DaemonStatus idle = endedWell ? DaemonStatus::stopped : DaemonStatus::crashed;
        statuses.insert_or_assign(std::string(columns[2]),
                                  hasProcess ? DaemonStatus::running : idle);
    }
    return statuses;
}

DaemonStatus statusOf(const StatusMap& statuses, std::string_view label) {
    const auto found = statuses.find(label);
    return found == statuses.end() ? DaemonStatus::stopped : found->second;
}

} // namespace varnhold
