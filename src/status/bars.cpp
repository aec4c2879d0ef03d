#include "status/bars.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "base/files.h"
#include "base/text.h"
#include "base/unicode.h"
#include "lifecycle/launch_agent.h"
#include "records/bots.h"

namespace varnhold {

namespace {

constexpr std::uint64_t tailSize = 6144; // bytes
constexpr std::array<std::string_view, 4> activityMarkers{"[PROCESS]", "[CHAIN]", "[NOTIFY]",
                                                          "[MSG]"};
constexpr double riseFactor = 0.18;
constexpr double fallFactor = 0.05;
constexpr double snapThreshold = 0.001;

constexpr double imageHeight = 16; // points, as all of these
constexpr double barWidth = 2;
constexpr double barPitch = 3;

double valueOf(const std::map<std::string, double>& map, const std::string& role) {
    const auto found = map.find(role);
    return found == map.end() ? 0.0 : found->second;
}

// Built from the role whatever label the record has, so an agent with a label of another form never
// lifts its bar.
bool runs(const std::string& role, const StatusMap& statuses) {
    return statusOf(statuses, labelOfRole(role)) == DaemonStatus::running;
}

// Looks at the file before it reads it: what is written meanwhile shows at the next look.
int countedMarks(const std::string& role, const CountedLogs& before, CountedLogs& now) {
    const std::string path = logPath(role);
    const auto stamp = files::stampOf(path);
    const auto known = stamp ? before.find(role) : before.end();
    if (known != before.end() && known->second.stamp == *stamp) {
        return known->second.marks;
    }
    const int marks = countActivityMarkers(path);
    if (stamp) {
        now.insert_or_assign(role, CountedLog{*stamp, marks});
    }
    return marks;
}

bool step(double& current, double target) {
    const double next = current + (target - current) * (current < target ? riseFactor : fallFactor);
    if (std::abs(next - current) > snapThreshold) {
        current = next;
        return true;
    }
    if (current != target) {
        current = target;
        return true;
    }
    return false;
}

} // namespace

void setOrder(BarState& bars, const std::vector<std::string>& roles) {
    if (bars.botOrder == roles) {
        return;
    }
    bars.botOrder = roles;
    for (const std::string& role : roles) {
        if (!bars.barCurrent.contains(role)) {
            bars.barCurrent[role] = 0.0;
            bars.barTarget[role] = 0.0;
        }
    }
}

double botHueForIndex(std::size_t index, std::size_t count, double rainbowEnd) {
    if (count <= 1) {
        return 0.0;
    }
    return static_cast<double>(index) / static_cast<double>(count - 1) * rainbowEnd;
}

int countMarkers(std::string_view log) {
    if (!unicode::isValidUtf8(log)) {
        return 0;
    }
    std::size_t count = 0;
    for (const std::string_view marker : activityMarkers) {
        count += text::countOccurrences(log, marker);
    }
    return static_cast<int>(count);
}

int countActivityMarkers(const std::string& path) {
    const Result<std::string> tail = files::readTail(path, tailSize);
    return tail ? countMarkers(*tail) : 0;
}

ActivitySample sampleActivity(const std::vector<std::string>& roles, const StatusMap& statuses,
                              const std::map<std::string, int>& previous, const CountedLogs& logs) {
    ActivitySample sample;
    for (const std::string& role : roles) {
        if (!runs(role, statuses)) {
            sample.targets[role] = 0.0;
            continue;
        }
        const int count = countedMarks(role, logs, sample.logs);
        const auto before = previous.find(role);
        const bool rose = before != previous.end() && before->second < count;
        sample.marks[role] = count;
        sample.targets[role] = rose ? 1.0 : 0.0;
    }
    return sample;
}

void apply(BarState& bars, const std::vector<std::string>& roles, const ActivitySample& sample) {
    for (const std::string& role : roles) {
        if (const auto target = sample.targets.find(role); target != sample.targets.end()) {
            bars.barTarget[role] = target->second;
        }
        if (const auto log = sample.logs.find(role); log != sample.logs.end()) {
            bars.logs.insert_or_assign(role, log->second);
        }
        if (const auto mark = sample.marks.find(role); mark != sample.marks.end()) {
            bars.lastActivityMarks[role] = mark->second;
        }
    }
}

bool areAtRest(const BarState& bars) {
    return std::all_of(bars.botOrder.begin(), bars.botOrder.end(), [&bars](const auto& role) {
        return valueOf(bars.barCurrent, role) == valueOf(bars.barTarget, role);
    });
}

bool animate(BarState& bars) {
    bool changed = false;
    for (const std::string& role : bars.botOrder) {
        double level = valueOf(bars.barCurrent, role);
        if (step(level, valueOf(bars.barTarget, role))) {
            bars.barCurrent[role] = level;
            changed = true;
        }
    }
    return changed;
}

BarImage barImage(const BarState& bars, double rainbowEnd) {
    const std::vector<std::string> nobody{"_"};
    const std::vector<std::string>& roles = bars.botOrder.empty() ? nobody : bars.botOrder;
    BarImage image;
    image.width = static_cast<double>(roles.size()) * barPitch - (barPitch - barWidth);
    image.height = imageHeight;
    for (std::size_t i = 0; i < roles.size(); ++i) {
        const double height =
            std::max(smallestBar, valueOf(bars.barCurrent, roles[i]) * imageHeight);
        image.bars.push_back({.x = static_cast<double>(i) * barPitch,
                              .y = (imageHeight - height) / 2,
                              .width = barWidth,
                              .height = height,
                              .hue = botHueForIndex(i, roles.size(), rainbowEnd)});
    }
    return image;
}

} // namespace varnhold
