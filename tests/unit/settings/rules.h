#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "records/assignments.h"
#include "records/models.h"
#include "settings/target_list.h"

namespace varnhold::testing {

using Rows = std::vector<AIModelItem>;
using Chains = std::map<TargetList, Rows>;

// A sort of model that the library can hold, and what it takes to enter a chain.
struct Kind {
    AIModelItem item;
    std::string need;          // what must be connected; empty for nothing
    bool thinkingOnly = false; // for architect and governor alone
};

[[nodiscard]] const std::vector<Kind>& kinds();

// The rules of chain editing told a second time, as plainly as they can be, to hold the real state
// against. Knows neither windows nor files: what is "on disk" is what the last save saw.
class Rules {
public:
    // Which uid the real state gave to the copy that it put into this place.
    using GivenUid = std::function<std::string(TargetList list, std::size_t place)>;

    Rules();

    Chains chains, chainsOnDisk;
    std::array<Rows, 4> library; // in the order of looking things up
    std::optional<Rows> libraryOnDisk;
    ChainBotAssignments assignments, assignmentsOnDisk;
    std::vector<std::string> bots;
    std::set<std::string> connected;
    std::optional<std::string> dragging;
    std::string alert;
    int saves = 0;
    std::vector<std::string> checked; // ids of which it was asked whether they are here

    void startDrag(const std::string& uid);
    void endDrag() { dragging.reset(); }
    void dragOver(TargetList list, const std::string& target);
    void releaseOnRow(TargetList list);
    void drop(const std::string& payload, TargetList list, std::optional<std::size_t> at,
              const GivenUid& givenUid);
    void dropOnLibrary(const std::string& payload);
    void dropBot(const std::string& label, TargetList list);
    void unassign(const std::string& label, TargetList list);
    void deleteFromLibrary(const AIModelItem& item);
    void pass(std::chrono::milliseconds duration);
    void save();

private:
    [[nodiscard]] std::string refusal(const AIModelItem& item, TargetList list) const;
    [[nodiscard]] const AIModelItem* inLibrary(const std::string& payload) const;

    struct Expiry {
        std::chrono::milliseconds at{};
        std::string uid;
    };
    std::chrono::milliseconds now_{};
    std::vector<Expiry> expiries_;
};

} // namespace varnhold::testing
