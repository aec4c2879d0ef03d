#pragma once

#include <array>
#include <string_view>

namespace varnhold {

// The six failover chains. On screen `worker` is the Coding Chain and `voice` the Audio Chain.
enum class TargetList { architect, worker, photo, video, voice, governor };

inline constexpr std::array allTargetLists{TargetList::architect, TargetList::worker,
                                           TargetList::photo,     TargetList::video,
                                           TargetList::voice,     TargetList::governor};

// The chain's name in files and maps.
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
        break;
    }
    return "governor";
}

} // namespace varnhold
