#include "fleets.h"

#include <cmath>

#include "status/fleet_picture.h"
#include "support/records.h"

namespace varnhold::testing {

BarImage barsOf(int bots, bool busy) {
    BarState bars;
    std::vector<std::string> roles;
    for (int i = 0; i < bots; ++i) {
        roles.push_back(std::to_string(i));
    }
    setOrder(bars, roles);
    for (int i = 0; busy && i < bots; ++i) {
        bars.barCurrent[std::to_string(i)] = std::abs(std::sin(i * 1.7 + 1));
    }
    return barImage(bars, rainbowEnd);
}

std::vector<MenuRow> menuRows() {
    FleetPicture sources;
    sources.alerts = {{"gemini", "2026-03-04"}};
    const auto add = [&](const char* icon, const char* title, const char* role,
                         DaemonStatus status) {
        sources.bots.push_back(bot(role, {.icon = icon, .title = title}));
        sources.statuses[labelOf(role)] = status;
    };
    add("🧭", "Planner", "planner", DaemonStatus::running);
    add("🔬", "Research & Review", "researcher", DaemonStatus::running);
    add("🛠️", "Builder_two", "builder", DaemonStatus::running);
    add("☎️", "Customer desk", "desk", DaemonStatus::running);
    add("🚒", "Fire drill", "fire-drill", DaemonStatus::crashed);
    add("🌙", "Nachtwächter", "night", DaemonStatus::stopped);
    sources.models = {{"planner", "claude-opus-4"}, {"builder", "qwen-3-coder"}};
    sources.groups = {{"Night shift", {"Claude Opus 4", "Gemini 2.5 Pro", "Qwen 3 (local)"}}};
    return statusMenuRows(sources);
}

} // namespace varnhold::testing
