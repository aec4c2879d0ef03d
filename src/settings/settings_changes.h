#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "settings/target_list.h"

// How the settings state tells its one observer what it did. Main thread only.
namespace varnhold {

// How a change should come to be seen.
enum class Animation {
    none,
    standard, // the toolkit's own default
    spring,   // rows that find their new places
    easeOut,  // what was dragged comes back gently
};

struct ChainPlace {
    TargetList list = TargetList::architect;
    std::size_t row = 0;

    bool operator==(const ChainPlace&) const = default;
};

// One row that came into a chain, left it or changed places. Without `from` it is new, without `to`
// it is gone. Rows of `from` are counted before the move, those of `to` after it.
struct ChainMove {
    std::string uid;
    std::optional<ChainPlace> from = std::nullopt;
    std::optional<ChainPlace> to = std::nullopt;

    bool operator==(const ChainMove&) const = default;
};

using ChangeObserver = std::function<void(Animation animation)>;
using MoveObserver = std::function<void(const ChainMove& move)>;

} // namespace varnhold
