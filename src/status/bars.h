#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/files.h"
#include "status/job_list.h"

// The bars of the status item: one per bot, lifted when the bot has just been busy.
//
// The program never talks to a bot about this. What it knows of a bot's activity is how many marks
// stand in the last stretch of its log, compared with two seconds before: a rise lifts the bar
// fully, anything else lets it sink. All of it is plain logic; what draws is given rectangles and
// hues.
namespace varnhold {

// A log as it was when its marks were counted.
struct CountedLog {
    files::Stamp stamp;
    int marks = 0;
};
using CountedLogs = std::map<std::string, CountedLog>; // by role

// One bar per role, in the order of the bots file. Main thread. Levels and targets of a role that
// has left the order stay, and apply again should it come back.
struct BarState {
    std::vector<std::string> botOrder;
    std::map<std::string, double> barTarget;  // 0 or 1
    std::map<std::string, double> barCurrent; // 0 to 1
    std::map<std::string, int> lastActivityMarks;
    CountedLogs logs; // of the sample before
};

// Takes over a new order; roles seen for the first time begin flat.
void setOrder(BarState& bars, const std::vector<std::string>& roles);

// Hue of the bot at `index` of `count`, 0 to 1: the first is red, the rest spread evenly up to
// `rainbowEnd`.
[[nodiscard]] double botHueForIndex(std::size_t index, std::size_t count, double rainbowEnd);

// Marks of activity in a text, and in the last 6144 bytes of a log. The tail is cut by bytes: one
// that begins inside a character, or holds invalid UTF-8 anywhere, counts as 0. Any thread.
[[nodiscard]] int countMarkers(std::string_view log);
[[nodiscard]] int countActivityMarkers(const std::string& path);

struct ActivitySample {
    std::map<std::string, double> targets; // a target for each role
    std::map<std::string, int> marks;      // marks of the roles that run
    CountedLogs logs;
};

// Looks at the log of every running role. Reads files, so it works on copies away from the main
// thread; `previous` holds the marks of the sample before, `logs` what it has counted them in: a
// log that nobody has written to since isn't read again.
[[nodiscard]] ActivitySample sampleActivity(const std::vector<std::string>& roles,
                                            const StatusMap& statuses,
                                            const std::map<std::string, int>& previous,
                                            const CountedLogs& logs = {});

void apply(BarState& bars, const std::vector<std::string>& roles, const ActivitySample& sample);

// Whether no step would move anything.
[[nodiscard]] bool areAtRest(const BarState& bars);

// One step of every bar towards its target, fast up and slow down. True if anything moved.
bool animate(BarState& bars);

// In points; y grows downwards, which makes no difference since bars are centred.
struct BarRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    double hue = 0; // 0 to 1

    bool operator==(const BarRectangle&) const = default;
};

struct BarImage {
    double width = 0;
    double height = 0;
    std::vector<BarRectangle> bars;

    bool operator==(const BarImage&) const = default;
};

inline constexpr double barCornerRadius = 1;
inline constexpr double smallestBar = 1; // points; a bar at rest still shows
inline constexpr double barSaturation = 0.8;
inline constexpr double barBrightness = 0.95;

// With no bots at all there is one flat bar, so that the item never vanishes.
[[nodiscard]] BarImage barImage(const BarState& bars, double rainbowEnd);

} // namespace varnhold
