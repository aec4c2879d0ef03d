#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

// The six failover chains by name, and the orders in which all of them are gone through. What else
// there is to a chain stands in chain_sections.h.
namespace varnhold {

// On screen `worker` is the Coding Chain and `voice` the Audio Chain.
enum class TargetList { architect, worker, photo, video, voice, governor };

// The chain's name in files and maps; empty for a number that is no chain's.
[[nodiscard]] constexpr std::string_view chainKey(TargetList list) {
    switch (list) {
    case TargetList::architect:
        return "architect";
    case TargetList::worker:
        return "worker";
    case TargetList::photo:
        return "photo";
    case TargetList::video:
        return "video";
    case TargetList::voice:
        return "voice";
    case TargetList::governor:
        return "governor";
    }
    return {};
}

inline constexpr std::array allTargetLists{TargetList::architect, TargetList::worker,
                                           TargetList::photo,     TargetList::video,
                                           TargetList::voice,     TargetList::governor};
inline constexpr std::size_t chainCount = allTargetLists.size();

// The order in which chain files are read at the start and written by each save, and in which
// chains are searched for a row that is dragged out.
inline constexpr std::array chainFileOrder{TargetList::worker, TargetList::architect,
                                           TargetList::photo,  TargetList::video,
                                           TargetList::voice,  TargetList::governor};

static_assert(chainKey(static_cast<TargetList>(chainCount)).empty() &&
                  !chainKey(static_cast<TargetList>(chainCount - 1)).empty(),
              "a chain is missing from allTargetLists");
static_assert(std::is_permutation(allTargetLists.begin(), allTargetLists.end(),
                                  chainFileOrder.begin(), chainFileOrder.end()),
              "a chain is missing from chainFileOrder");

} // namespace varnhold
