#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

// The agents that the program knows by name.
//
// The lists are data only: the fleet that runs comes from the bots file alone, and a fresh
// installation has an empty one in spite of them.
namespace varnhold {

// One known agent. Its title can change, and whoever observes the record is told. Main thread.
class DaemonInfo final {
public:
    DaemonInfo(std::string icon, std::string title, std::string launchdLabel, std::string deptKey);

    [[nodiscard]] const std::string& icon() const { return icon_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    [[nodiscard]] const std::string& launchdLabel() const { return launchdLabel_; }
    // Same value as a bot's role; empty for an agent that has none.
    [[nodiscard]] const std::string& deptKey() const { return deptKey_; }

    // Observers are called after the change, in the order in which they came.
    void setTitle(std::string title);
    void observe(std::function<void(const DaemonInfo&)> observer);

private:
    std::string icon_;
    std::string title_;
    std::string launchdLabel_;
    std::string deptKey_;
    std::vector<std::function<void(const DaemonInfo&)>> observers_;
};

struct Roster {
    Roster();

    std::vector<DaemonInfo> staffDaemons;
    std::vector<DaemonInfo> workerDaemons;
    std::vector<DaemonInfo> systemDaemons;
    std::vector<DaemonInfo> kindwellDaemons;
};

} // namespace varnhold
